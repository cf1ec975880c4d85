// Small text helpers shared by the renderers.
#ifndef VEXEL_INTERNAL_TEXT_H
#define VEXEL_INTERNAL_TEXT_H

#include <memory>
#include <new>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "internal/Span.h"
#include "vexel/SQLValue.h"
#include "vexel/col.h"
#include "vexel/tab.h"
#include "vexel/view.h"

namespace vexel {
namespace internal {

// Copies of columns given the builder's dialect: the builder's dialect, not
// the column's, decides how a stored column renders.
col with_dialect(const col& c, tessel::DBTYPE db);
std::vector<col> with_dialect(const std::vector<col>& cols, tessel::DBTYPE db);

// A table's, view's or column's text as the builder's dialect renders it.
std::string table_text(const tab& t, tessel::DBTYPE db);
std::string view_text(const view& v, tessel::DBTYPE db);
std::string column_text(const col& c, tessel::DBTYPE db);

// A column's text as a plain copy of it in dialect `db` renders it
// (col(c, db).col_name(), and to_order()), appended without the copy.
struct ColumnText {
  static void append(std::string& out, const col& c, tessel::DBTYPE db) {
    c.append_text(out, db, db == tessel::DB_SQLITE);
  }
  // The column's col_name() text, written into `out`; a subclass may name
  // itself otherwise, so only the class itself is written in place.
  static void append_name(std::string& out, const col& c) {
    if (typeid(c) != typeid(col)) {
      out += c.col_name();
      return;
    }
    c.append_text(out, c.db_type_,
                  c.col_type_ != ColumnFunction && c.db_type_ == tessel::DB_SQLITE);
  }
  // The length append_name writes, for reserving; 0 for a subclass.
  static std::size_t name_size(const col& c) {
    if (typeid(c) != typeid(col)) return 0;
    const bool sqlite = c.db_type_ == tessel::DB_SQLITE;
    const std::size_t schema = c.schema_name_.empty() ? 0 : c.schema_name_.size() + 1;
    if (c.col_type_ == ColumnFunction) {
      return schema == 0 ? 0 : (sqlite ? 0 : schema) + c.col_name_.size();
    }
    return (c.excluded_ ? 9 : 0) + (sqlite ? 0 : schema) +
           (c.table_name_.empty() ? 0 : c.table_name_.size() + 1) + c.col_name_.size();
  }
  static void append_order(std::string& out, const col& c, tessel::DBTYPE db) {
    append(out, c, db);
    out += c.order_sql_;
  }
};

// The text a refused SafeValue renders: a marker, the reason and a NUL
// byte. No statement may hold a NUL byte: the execution path runs none that
// contains a refused value and logs its reason instead.
std::string refused_value_text(const std::string& why);
// Whether `sql` holds a refused value, and then the reason in `why`.
bool find_refused_value(const std::string& sql, std::string& why);

// A value's text in dialect `db`: its fixed text, or the form a value made
// from a SafeValue takes there.
struct ValueText {
  static void append(std::string& out, const SQLValue& v, tessel::DBTYPE db) {
    if (v.per_dialect_) {
      out += v.per_dialect_->GetExpr(db);
    } else {
      out += v.value_;
    }
  }
  static std::string of(const SQLValue& v, tessel::DBTYPE db) { return v.GetExpr(db); }
  // The length append_exact writes when it is known beforehand, else 0.
  static std::size_t size(const SQLValue& v) {
    return typeid(v) == typeid(SQLValue) && !v.per_dialect_ ? v.value_.size() : 0;
  }
  // of(v, db) written into `out`; a subclass may render otherwise.
  static void append_exact(std::string& out, const SQLValue& v, tessel::DBTYPE db) {
    if (typeid(v) == typeid(SQLValue)) {
      append(out, v, db);
    } else {
      out += v.GetExpr(db);
    }
  }
};

// Columns as text in a builder's dialect, for the lists of names that
// statements write joined by "," (conflict targets, returned columns), each
// after an optional reference ("inserted.").
class ColumnTexts {
 public:
  void add(Span<col> cols, tessel::DBTYPE db);
  void clear() { names_.clear(); }
  bool empty() const { return names_.empty(); }
  const std::vector<std::string>& names() const { return names_; }
  // Whether the list writes any text at all: its keyword goes only then.
  bool listed(const char* ref) const;
  // The names separated by ",".
  void put(std::string& out, const char* ref) const;
  std::size_t size() const;

 private:
  std::vector<std::string> names_;
};

// Columns in dialect `db` by col_name(), separated by " , ". A column that
// renders empty while nothing was written yet adds no separator.
std::string join_names(Span<col> cols, tessel::DBTYPE db);
// Columns in dialect `db` by to_order(), separated by " , ".
std::string join_orders(Span<col> cols, tessel::DBTYPE db);

// A floating value with six decimals and no exponent, as printf's "%f"
// writes it in the C locale ("1.500000", "-0.000001"), whatever locale the
// host process runs under: a decimal comma would change the statement.
std::string fixed_six(double value);

// Allocates an implementation object; null when memory runs out, which the
// facades report instead of throwing.
template <typename T, typename... Args>
std::shared_ptr<T> make_nothrow(Args&&... args) {
  try {
    return std::make_shared<T>(std::forward<Args>(args)...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_TEXT_H
