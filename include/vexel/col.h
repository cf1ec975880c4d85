/// \file
/// A column reference: names plus a dialect, rendered as plain qualified text
/// ("s.t.c"; SQLite drops the schema). Modifiers (AS, DISTINCT, arithmetic)
/// edit the column text in place and return *this so calls chain.
#ifndef VEXEL_COL_H
#define VEXEL_COL_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "tessel/DBType.h"
#include "vexel/Ptr_CommonExpr.h"
#include "vexel/export.h"

namespace vexel {

class CommonExpr;
class QueryBuilder;
namespace internal {
struct ColumnText;
}  // namespace internal
class SQLExpr;
class SQLValue;
class SafeValue;

enum ColType : int32_t {
  ColumnPlain = 1,
  ColumnFunction = 3,
};

class VEXEL_API col {
 public:
  col() = default;
  col(const std::string& name);
  col(const char* name);
  col(const col& other, const tessel::DBTYPE& db);
  /// A column whose text is the node's text in dialect `db`.
  col(const CommonExpr& e, const tessel::DBTYPE& db);
  col(const col&) = default;
  col(col&&) = default;
  col& operator=(const col&) = default;
  col& operator=(col&&) = default;

  /// The rendered column in the column's own dialect; every statement
  /// builder renders columns through it.
  virtual std::string col_name() const;
  /// Declared after col_name(), which keeps the first slot; derived columns
  /// (functions, arrays, aggregates) are destroyed whole however held.
  virtual ~col() = default;
  /// The same text in the given dialect, for hosts.
  std::string GetExpr(const tessel::DBTYPE& db) const;

  void set_col_name(const std::string& name) { col_name_ = name; }
  void set_col_type(const ColType& type) { col_type_ = type; }
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }
  void set_schema_name(const std::string& name);
  void set_table_name(const std::string& name);
  void set_view_name(const std::string& name);

  const std::string& only_col_name() const { return col_name_; }
  const std::string& only_table_name() const { return table_name_; }
  const std::string& only_schema_name() const { return schema_name_; }
  const std::string& only_order_sql() const { return order_sql_; }
  tessel::DBTYPE db_type() const { return db_type_; }
  ColType col_type() const { return col_type_; }

  /// Orders columns by their rendered text, so a col can key a std::map.
  bool operator<(const col& other) const;

  /// Modifiers.
  col& AS(const std::string& alias);
  col& AS(const char* alias);
  col& DISTINCT();
  col& EXCLUDED();
  col& ASC();
  col& DESC();
  col& NullsFirst();
  col& NullsLast();
  col& operator+(const col& other);
  col& operator+(const SQLValue& v);
  col& increase(const SQLValue& v);
  col& operator-(const col& other);
  col& operator-(const SQLValue& v);
  col& decrease(const SQLValue& v);
  /// col_name() followed by the ordering suffix, if any.
  std::string to_order() const;

  /// Conditions. The column text is taken when the condition is built, with
  /// the column's own dialect; operands are inserted as given, never escaped.
  /// Comparisons, IN, BETWEEN and NULL tests are finished text at once.
  Ptr_CommonExpr operator==(const short& v) const;
  Ptr_CommonExpr operator==(const unsigned short& v) const;
  Ptr_CommonExpr operator==(const int& v) const;
  Ptr_CommonExpr operator==(const unsigned int& v) const;
  Ptr_CommonExpr operator==(const long& v) const;
  Ptr_CommonExpr operator==(const unsigned long& v) const;
  Ptr_CommonExpr operator==(const long long& v) const;
  Ptr_CommonExpr operator==(const unsigned long long& v) const;
  Ptr_CommonExpr operator==(const float& v) const;
  Ptr_CommonExpr operator==(const double& v) const;
  Ptr_CommonExpr operator==(const std::string& s) const;
  Ptr_CommonExpr operator==(const char* s) const;
  Ptr_CommonExpr operator==(const col& other) const;
  Ptr_CommonExpr operator==(const SQLValue& v) const;
  /// "c = (subquery)".
  Ptr_CommonExpr operator==(const QueryBuilder& q) const;
  /// The other comparisons with a scalar subquery: "c != (subquery)", and
  /// "<", "<=", ">", ">=" the same way.
  Ptr_CommonExpr operator!=(const QueryBuilder& q) const;
  Ptr_CommonExpr operator<(const QueryBuilder& q) const;
  Ptr_CommonExpr operator<=(const QueryBuilder& q) const;
  Ptr_CommonExpr operator>(const QueryBuilder& q) const;
  Ptr_CommonExpr operator>=(const QueryBuilder& q) const;
  Ptr_CommonExpr eq(const SQLValue& v) const;
  Ptr_CommonExpr operator!=(const col& other) const;
  Ptr_CommonExpr operator!=(const SQLValue& v) const;
  Ptr_CommonExpr neq(const SQLValue& v) const;
  /// operator<(const col&) orders columns; the comparison with a column is lt.
  Ptr_CommonExpr operator<(const SQLValue& v) const;
  Ptr_CommonExpr lt(const SQLValue& v) const;
  Ptr_CommonExpr lt(const col& other) const;
  Ptr_CommonExpr operator<=(const col& other) const;
  Ptr_CommonExpr operator<=(const SQLValue& v) const;
  Ptr_CommonExpr operator>(const col& other) const;
  Ptr_CommonExpr operator>(const SQLValue& v) const;
  Ptr_CommonExpr gt(const SQLValue& v) const;
  Ptr_CommonExpr operator>=(const col& other) const;
  Ptr_CommonExpr operator>=(const SQLValue& v) const;
  Ptr_CommonExpr operator|(const SQLValue& v) const;
  Ptr_CommonExpr operator|(const SQLExpr& e) const;
  /// `list` is taken verbatim: "c IN (" + list + ")".
  Ptr_CommonExpr in(const std::string& list) const;
  Ptr_CommonExpr in(const std::vector<int>& values) const;
  /// Each item in single quotes.
  Ptr_CommonExpr in(const std::vector<std::string>& values) const;
  Ptr_CommonExpr in(const QueryBuilder& q) const;
  /// Braced lists ({1, 2} or {"a", "b"}) would be ambiguous between the
  /// string and vector forms; these take them.
  Ptr_CommonExpr in(std::initializer_list<int> values) const;
  Ptr_CommonExpr in(std::initializer_list<const char*> values) const;
  Ptr_CommonExpr notin(const std::string& list) const;
  Ptr_CommonExpr notin(const std::vector<int>& values) const;
  Ptr_CommonExpr notin(const std::vector<std::string>& values) const;
  Ptr_CommonExpr notin(const QueryBuilder& q) const;
  Ptr_CommonExpr notin(std::initializer_list<int> values) const;
  Ptr_CommonExpr notin(std::initializer_list<const char*> values) const;
  Ptr_CommonExpr BETWEEN(const SQLValue& low, const SQLValue& high) const;
  Ptr_CommonExpr is_null() const;
  Ptr_CommonExpr is_not_null() const;
  /// Lists and patterns of safe values, each written as SafeValue writes it
  /// in the column's dialect: "c IN ('a','b''s')", "c NOT IN (...)", and
  /// "c LIKE 'pattern' ESCAPE '\'" (see SafeValue::escape_like). An empty
  /// list renders "c IN (NULL)", which matches no row.
  Ptr_CommonExpr in_values(const std::vector<SafeValue>& values) const;
  Ptr_CommonExpr not_in_values(const std::vector<SafeValue>& values) const;
  Ptr_CommonExpr like_escaped(const SafeValue& pattern, char escape = '\\') const;

  /// Conditions rendered with the statement's dialect.
  Ptr_CommonExpr like(const std::string& pattern) const;
  /// ILIKE on PostgreSQL, LIKE elsewhere.
  Ptr_CommonExpr ilike(const std::string& pattern) const;
  Ptr_CommonExpr similar_to(const SQLValue& v) const;
  /// Regular expressions: regexp is case-insensitive, regexp_cap
  /// case-sensitive. On SQLite they call regexp(text, pattern, mode), which
  /// the host registers on its connections.
  Ptr_CommonExpr regexp(const std::string& pattern) const;
  Ptr_CommonExpr regexp_cap(const std::string& pattern) const;
  Ptr_CommonExpr not_regexp(const std::string& pattern) const;
  Ptr_CommonExpr not_regexp_cap(const std::string& pattern) const;
  /// Uses the bare column name, without schema or table.
  Ptr_CommonExpr full_text_search(const std::string& words) const;
  Ptr_CommonExpr XOR(const SQLValue& v) const;
  Ptr_CommonExpr XOR(const SQLExpr& e) const;

  /// Bit-string values ('0'/'1' text): PostgreSQL bit operators, or on SQLite
  /// the str_bit_* functions the host registers.
  Ptr_CommonExpr str_bit_and(const std::string& bits) const;
  Ptr_CommonExpr str_bit_or(const std::string& bits) const;
  Ptr_CommonExpr str_bit_xor(const std::string& bits) const;
  Ptr_CommonExpr str_bit_not() const;
  Ptr_CommonExpr str_bit_shift_left(int n) const;
  Ptr_CommonExpr str_bit_shift_right(int n) const;

 protected:
  /// Qualified text for a column whose type is not a function.
  std::string plain_text(bool drop_schema) const;
  /// Text of a function copied into a plain column.
  std::string function_text(tessel::DBTYPE db) const;
  /// Appends the text a plain col renders: a function's as in dialect `db`,
  /// a plain column's without its schema when `drop_schema`.
  void append_text(std::string& out, tessel::DBTYPE db, bool drop_schema) const;

  bool excluded_ = false;
  std::string schema_name_;
  std::string table_name_;
  std::string col_name_;
  std::string order_sql_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  ColType col_type_ = ColumnPlain;

 private:
  friend struct internal::ColumnText;
};

}  // namespace vexel

#endif  // VEXEL_COL_H
