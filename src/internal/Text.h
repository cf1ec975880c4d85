// Small text helpers shared by the renderers.
#ifndef VEXEL_INTERNAL_TEXT_H
#define VEXEL_INTERNAL_TEXT_H

#include <charconv>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

#include "internal/Fill.h"
#include "internal/ShortText.h"
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
// table_text written into `out`.
void append_table(std::string& out, const tab& t);
// `out` made table_text, in place.
inline void assign_table(std::string& out, const tab& t) {
  out.clear();
  append_table(out, t);
}
template <std::size_t N>
void assign_table(ShortText<N>& out, const tab& t) {
  out.clear();
  if (!t.schema_name().empty()) {
    out.append(t.schema_name());
    out.append('.');
  }
  out.append(t.get_only_table_name());
}
std::string view_text(const view& v, tessel::DBTYPE db);
std::string column_text(const col& c, tessel::DBTYPE db);

// Writes into room known to be large enough, without a check per piece.
struct Into {
  char* const begin;
  char* p = begin;
  void put(const char* s, std::size_t n) {
    detail::copy_bytes(p, s, n);
    p += n;
  }
  void put(char c) { *p++ = c; }
  void put(std::string_view s) { put(s.data(), s.size()); }
  // A number as std::to_string writes it, in at most 11 bytes.
  void put_number(int value) { p = std::to_chars(p, p + 11, value).ptr; }
  Into& append(std::string_view s) {
    put(s.data(), s.size());
    return *this;
  }
  Into& operator+=(std::string_view s) { return append(s); }
  Into& operator+=(char c) {
    put(c);
    return *this;
  }
  // Takes back the last `n` bytes written, or all of them.
  void drop(std::size_t n) { p -= n < size() ? n : size(); }
  // The length written so far.
  std::size_t size() const { return static_cast<std::size_t>(p - begin); }
};

// The text `write(sink)` writes, given that it writes at most `bound`
// bytes: a short one on the stack without a check per piece and copied
// once, a longer one through a Fill.
template <typename Write>
std::string bounded_text(std::size_t bound, Write write) {
  char small[1024];
  if (bound <= sizeof small) {
    Into into{small};
    write(into);
    return std::string(small, into.size());
  }
  std::string text;
  {
    Fill fill(text, bound);
    write(fill);
  }
  return text;
}
// The same, appended to `out`. bounded_text does not call this: making the
// result from the stack in one piece costs about 80 instructions less than
// appending to an empty string.
template <typename Write>
void append_bounded(std::string& out, std::size_t bound, Write write) {
  char small[512];
  if (bound <= sizeof small) {
    Into into{small};
    write(into);
    out.append(small, into.size());
    return;
  }
  Fill fill(out, bound);
  write(fill);
}

// A column's text as a plain copy of it in dialect `db` renders it
// (col(c, db).col_name(), and to_order()), appended without the copy.
struct ColumnText {
  static void append(std::string& out, const col& c, tessel::DBTYPE db) {
    Append a(out);
    put(a, c, db);
  }
  // The text a builder of dialect `db` writes for `c`: SQLite's drops the
  // schema.
  template <typename Sink>
  static void put(Sink& f, const col& c, tessel::DBTYPE db) {
    put(f, c, db, db == tessel::DB_SQLITE);
  }
  static std::size_t size(const col& c, tessel::DBTYPE db) {
    return size(c, db, db == tessel::DB_SQLITE);
  }
  // The column's col_name() text; a subclass may name itself otherwise, so
  // only the class itself is written in place.
  template <typename Sink>
  static void put_name(Sink& f, const col& c) {
    if (typeid(c) != typeid(col)) {
      const std::string name = c.col_name();
      f.put(name.data(), name.size());
      return;
    }
    put_own_name(f, c);
  }
  // Whether `c` is of the class itself, whose text is written in place.
  static bool own(const col& c) { return typeid(c) == typeid(col); }
  // The length put_own_name writes.
  static std::size_t own_name_size(const col& c) {
    return size(c, c.db_type_, c.db_type_ == tessel::DB_SQLITE);
  }
  // put_name for a column known to be of the class itself.
  template <typename Sink>
  static void put_own_name(Sink& f, const col& c) {
    put(f, c, c.db_type_, c.col_type_ != ColumnFunction && c.db_type_ == tessel::DB_SQLITE);
  }
  // The length put_name writes, for making room; 0 for a subclass.
  static std::size_t name_size(const col& c) { return own(c) ? own_name_size(c) : 0; }
  // The text in dialect `db`: a function's as that dialect writes it, a
  // plain column's without its schema when `drop_schema`.
  template <typename Sink>
  static void put(Sink& f, const col& c, tessel::DBTYPE db, bool drop_schema) {
    put(f, c, c.parts_.views(), db, drop_schema);
  }
  template <typename Sink>
  static void put_order(Sink& f, const col& c, tessel::DBTYPE db) {
    const ColumnParts::Views parts = c.parts_.views();
    put(f, c, parts, db, db == tessel::DB_SQLITE);
    f.put(parts.order.data(), parts.order.size());
  }
  // The length put writes.
  static std::size_t size(const col& c, tessel::DBTYPE db, bool drop_schema) {
    return size(c, c.parts_.views(), db, drop_schema);
  }
  static std::size_t order_size(const col& c, tessel::DBTYPE db) {
    const ColumnParts::Views parts = c.parts_.views();
    return size(c, parts, db, db == tessel::DB_SQLITE) + parts.order.size();
  }
  // The column `name` of a table or view, made with its parts at once.
  static col of(std::string_view schema, std::string_view table, std::string_view name,
                tessel::DBTYPE db) {
    return col(schema, table, name, db);
  }
  // The stored texts, for the renderers.
  static std::string_view order(const col& c) { return c.order_part(); }

 private:
  template <typename Sink>
  static void put(Sink& f, const col& c, const ColumnParts::Views& parts, tessel::DBTYPE db,
                  bool drop_schema) {
    if (c.col_type_ == ColumnFunction) {
      // A function copied into a plain column renders nothing without a
      // schema: select lists rely on this to drop unqualified function names.
      if (parts.schema.empty()) return;
      if (db != tessel::DB_SQLITE) put_part(f, parts.schema);
      f.put(parts.name.data(), parts.name.size());
      return;
    }
    if (c.excluded_) f.put("EXCLUDED.", 9);
    if (!drop_schema && !parts.schema.empty()) put_part(f, parts.schema);
    if (!parts.table.empty()) put_part(f, parts.table);
    f.put(parts.name.data(), parts.name.size());
  }
  static std::size_t size(const col& c, const ColumnParts::Views& parts, tessel::DBTYPE db,
                          bool drop_schema) {
    const std::size_t schema = parts.schema.empty() ? 0 : parts.schema.size() + 1;
    const std::size_t name = parts.name.size();
    if (c.col_type_ == ColumnFunction) {
      return schema == 0 ? 0 : (db == tessel::DB_SQLITE ? 0 : schema) + name;
    }
    const std::size_t table = parts.table.size();
    return (c.excluded_ ? 9 : 0) + (drop_schema ? 0 : schema) + (table == 0 ? 0 : table + 1) + name;
  }
  template <typename Sink>
  static void put_part(Sink& f, std::string_view part) {
    f.put(part.data(), part.size());
    f.put('.');
  }
};

// A column's text as ColumnText::append writes it, held for the length of
// a call: in place when it is short, which is nearly always.
class ColumnName {
 public:
  ColumnName(const col& c, tessel::DBTYPE db) {
    if (ColumnText::size(c, db) <= sizeof local_) {
      Into into{local_};
      ColumnText::put(into, c, db);
      text_ = std::string_view(local_, static_cast<std::size_t>(into.p - local_));
    } else {
      ColumnText::append(spilled_, c, db);
      text_ = spilled_;
    }
  }
  ColumnName(const ColumnName&) = delete;
  ColumnName& operator=(const ColumnName&) = delete;
  operator std::string_view() const { return text_; }

 private:
  char local_[96];
  std::string spilled_;
  std::string_view text_;
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
  // of(v, db) without a copy where the value holds its text; `scratch`
  // keeps the text otherwise, as long as the view is used.
  static std::string_view view(const SQLValue& v, tessel::DBTYPE db, std::string& scratch) {
    if (const std::string* text = fixed(v)) return *text;
    scratch = v.GetExpr(db);
    return scratch;
  }
  // of(v, db) written into `f`.
  static void put(Fill& f, const SQLValue& v, tessel::DBTYPE db) {
    if (const std::string* text = fixed(v)) {
      f.put(*text);
    } else {
      f.put(v.GetExpr(db));
    }
  }
  // The text every dialect writes, or null for a value made from a
  // SafeValue and for a subclass, which may render otherwise.
  static const std::string* fixed(const SQLValue& v) {
    return typeid(v) == typeid(SQLValue) && !v.per_dialect_ ? &v.value_ : nullptr;
  }
};

// Columns as text in a builder's dialect, for the lists of names that
// statements write joined by "," (conflict targets, returned columns), each
// after an optional reference ("inserted.").
class ColumnTexts {
 public:
  void add(Span<col> cols, tessel::DBTYPE db);
  void clear() {
    text_.clear();
    count_ = 0;
    more_ends_.clear();
  }
  bool empty() const { return count_ == 0; }
  std::size_t count() const { return count_; }
  std::string_view operator[](std::size_t i) const {
    const std::size_t from = i == 0 ? 0 : end(i - 1);
    return text_.view().substr(from, end(i) - from);
  }
  bool listed(const char* ref) const;
  // The names joined by ",", each after `ref` (Fill or Into).
  template <typename Sink>
  void put(Sink& out, const char* ref) const;
  // At least what put writes with a reference of up to 9 bytes.
  std::size_t size() const { return text_.size() + 10 * count_; }

 private:
  // The texts back to back, and where each ends: a few lists of short
  // names, the usual case, need no allocation at all.
  static constexpr std::size_t kInline = 4;
  std::size_t end(std::size_t i) const { return i < kInline ? ends_[i] : more_ends_[i - kInline]; }

  ShortText<32> text_;
  std::size_t count_ = 0;
  std::size_t ends_[kInline] = {};
  std::vector<std::size_t> more_ends_;
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

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_TEXT_H
