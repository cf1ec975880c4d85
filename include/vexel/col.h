/// \file
/// A column reference: names plus a dialect, rendered as plain qualified text
/// ("s.t.c"; SQLite drops the schema). Modifiers (AS, DISTINCT, arithmetic)
/// edit the column text in place and return *this so calls chain.
#ifndef VEXEL_COL_H
#define VEXEL_COL_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tessel/DBType.h"
#include "vexel/ColumnParts.h"
#include "vexel/Ptr_CommonExpr.h"
#include "vexel/export.h"

/// The library's public interface: reference objects, values and conditions,
/// statement builders and the catalogue.
namespace vexel {

class CommonExpr;
class QueryBuilder;
namespace internal {
struct ColumnText;
}  // namespace internal
class SQLExpr;
class SQLValue;
class SafeValue;

/// How a column renders: a plain qualified name or a function text.
enum ColType : int32_t {
  /// A plain column, rendered "schema.table.column" (SQLite drops the schema).
  ColumnPlain = 1,
  /// A function's text (func), rendered as given.
  ColumnFunction = 3,
};

/// A column reference: names plus a dialect (default PostgreSQL), rendered as
/// plain qualified text, and the source of conditions.
///
/// \code
/// vexel::sch shop("shop");
/// shop.set_db_type(conn->GetDBType());  // give objects the connection's dialect
/// vexel::col qty = shop.tab("items").col("qty");
/// // qty.col_name():  PostgreSQL, SQL Server "shop.items.qty"; SQLite "items.qty"
/// // (qty == 5).GetExpr(db):  "shop.items.qty = 5"; SQLite "items.qty = 5"
/// \endcode
///
/// Modifiers (AS, DISTINCT, EXCLUDED, ASC/DESC, +, -) change this column in
/// place and return it: after `qty.AS("q")`, `qty == 1` renders
/// "shop.items.qty AS q = 1" (PostgreSQL). Modify a copy (`vexel::col(qty).AS("q")`) when
/// the column is used again. INSERT column lists and SET targets take a bare
/// `vexel::col("qty")`: a qualified one is written qualified there.
class VEXEL_API col {
 public:
  col() = default;
  ///@{
  /// A bare column: `col("qty")` renders "qty" in every dialect.
  col(const std::string& name);
  col(const char* name);
  ///@}
  /// A copy of `other` that renders in dialect `db`.
  col(const col& other, const tessel::DBTYPE& db);
  /// A column whose text is the node's text in dialect `db`.
  col(const CommonExpr& e, const tessel::DBTYPE& db);
  ///@{
  /// Columns are plain values: copy and move freely.
  col(const col&) = default;
  col(col&&) = default;
  col& operator=(const col&) = default;
  col& operator=(col&&) = default;
  ///@}

  /// The rendered column in the column's own dialect; every statement
  /// builder renders columns through it.
  virtual std::string col_name() const;
  /// Declared after col_name(), which keeps the first slot; derived columns
  /// (functions, arrays, aggregates) are destroyed whole however held.
  virtual ~col() = default;
  /// The same text in the given dialect, for hosts.
  std::string GetExpr(const tessel::DBTYPE& db) const;

  ///@{
  /// Replace the column's name, type, dialect, schema, table or view name.
  void set_col_name(const std::string& name) { parts_.set(ColumnParts::kName, name); }
  void set_col_type(const ColType& type) { col_type_ = type; }
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }
  void set_schema_name(const std::string& name);
  void set_table_name(const std::string& name);
  void set_view_name(const std::string& name);
  ///@}

  ///@{
  /// The parts the column is made of: its bare name, table, schema, ordering
  /// suffix (" DESC " ...), dialect and type.
  std::string only_col_name() const { return std::string(name_part()); }
  std::string only_table_name() const { return std::string(table_part()); }
  std::string only_schema_name() const { return std::string(schema_part()); }
  std::string only_order_sql() const { return std::string(order_part()); }
  tessel::DBTYPE db_type() const { return db_type_; }
  ColType col_type() const { return col_type_; }
  ///@}

  /// Orders columns by their rendered text, so a col can key a std::map.
  bool operator<(const col& other) const;

  // Modifiers.
  ///@{
  /// Appends " AS alias" to this column, in place: `c.AS("q")` renders "shop.items.qty AS q".
  col& AS(const std::string& alias);
  col& AS(const char* alias);
  ///@}
  /// Marks this column DISTINCT, in place: `col("name").DISTINCT()` renders " DISTINCT name".
  /// On a qualified column the marker lands inside the qualifier ("shop.items. DISTINCT name").
  col& DISTINCT();
  /// The proposed row's value in an upsert, in place: `col("qty").EXCLUDED()` renders
  /// "EXCLUDED.qty".
  col& EXCLUDED();
  ///@{
  /// Sets the ordering suffix used by ORDER_BY (to_order()), in place:
  /// `c.DESC()` orders as "shop.items.qty DESC ", `c.DESC().NullsFirst()` as
  /// "shop.items.qty DESC  NULLS FIRST ".
  col& ASC();
  col& DESC();
  col& NullsFirst();
  col& NullsLast();
  ///@}
  ///@{
  /// Arithmetic that rewrites this column in place and returns it:
  /// `c + vexel::SQLValue(1)` makes `c` render "shop.items.qty + 1" from then on;
  /// `col("qty").increase(vexel::SQLValue(1))` renders "qty + 1" (the SET form).
  /// Apply it to a copy when `c` is used again.
  col& operator+(const col& other);
  col& operator+(const SQLValue& v);
  col& increase(const SQLValue& v);
  col& operator-(const col& other);
  col& operator-(const SQLValue& v);
  col& decrease(const SQLValue& v);
  ///@}
  /// col_name() followed by the ordering suffix, if any.
  std::string to_order() const;

  // Conditions. The column text is taken when the condition is built, with
  // the column's own dialect; operands are inserted as given, never escaped.
  // Comparisons, IN, BETWEEN and NULL tests are finished text at once.
  ///@{
  /// Equality with a number, a text (quoted as given, not escaped), another
  /// column, a value or a node: `c == 5` renders "shop.items.qty = 5",
  /// `c == "a"` renders "shop.items.qty = 'a'". Like every condition, it takes
  /// the column's text now, in the column's own dialect.
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
  ///@}
  /// Comparison with a scalar subquery: "shop.items.qty = (SELECT ...)".
  Ptr_CommonExpr operator==(const QueryBuilder& q) const;
  ///@{
  /// The other comparisons with a scalar subquery: "c != (SELECT ...)", and
  /// "<", "<=", ">", ">=" the same way.
  Ptr_CommonExpr operator!=(const QueryBuilder& q) const;
  Ptr_CommonExpr operator<(const QueryBuilder& q) const;
  Ptr_CommonExpr operator<=(const QueryBuilder& q) const;
  Ptr_CommonExpr operator>(const QueryBuilder& q) const;
  Ptr_CommonExpr operator>=(const QueryBuilder& q) const;
  ///@}
  /// Named forms of the comparisons: eq "=", neq "!=", lt "<", gt ">";
  /// `c.lt(vexel::SQLValue(5))` renders "shop.items.qty < 5".
  Ptr_CommonExpr eq(const SQLValue& v) const;
  ///@{
  /// "c != other" with a column or a value.
  Ptr_CommonExpr operator!=(const col& other) const;
  Ptr_CommonExpr operator!=(const SQLValue& v) const;
  Ptr_CommonExpr neq(const SQLValue& v) const;
  ///@}
  ///@{
  /// Ordered comparisons: "c < v", "c <= v", "c > v", "c >= v" with a value or
  /// a column. operator<(const col&) orders columns; the comparison with a
  /// column is lt.
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
  ///@}
  ///@{
  /// Bitwise or as a condition text: `c | vexel::SQLValue(3)` renders "shop.items.qty | 3".
  Ptr_CommonExpr operator|(const SQLValue& v) const;
  Ptr_CommonExpr operator|(const SQLExpr& e) const;
  ///@}
  ///@{
  /// IN lists: `c.in({1, 2})` renders "shop.items.qty IN (1,2)",
  /// `c.in({"x", "y"})` "shop.items.qty IN ('x','y')" (items quoted, not escaped),
  /// `c.in("1,2")` takes the text as it stands ("c IN (" + list + ")"), and
  /// `c.in(q)` a subquery.
  Ptr_CommonExpr in(const std::string& list) const;
  Ptr_CommonExpr in(const std::vector<int>& values) const;
  /// Each item in single quotes.
  Ptr_CommonExpr in(const std::vector<std::string>& values) const;
  Ptr_CommonExpr in(const QueryBuilder& q) const;
  /// Braced lists ({1, 2} or {"a", "b"}) would be ambiguous between the
  /// string and vector forms; these take them.
  Ptr_CommonExpr in(std::initializer_list<int> values) const;
  Ptr_CommonExpr in(std::initializer_list<const char*> values) const;
  ///@}
  ///@{
  /// The NOT IN forms of in(): `c.notin({1, 2})` renders "shop.items.qty NOT IN (1,2)".
  Ptr_CommonExpr notin(const std::string& list) const;
  Ptr_CommonExpr notin(const std::vector<int>& values) const;
  Ptr_CommonExpr notin(const std::vector<std::string>& values) const;
  Ptr_CommonExpr notin(const QueryBuilder& q) const;
  Ptr_CommonExpr notin(std::initializer_list<int> values) const;
  Ptr_CommonExpr notin(std::initializer_list<const char*> values) const;
  ///@}
  /// "shop.items.qty BETWEEN 1 AND 2".
  Ptr_CommonExpr BETWEEN(const SQLValue& low, const SQLValue& high) const;
  ///@{
  /// "c IS NULL " and "c IS NOT NULL " (with a trailing blank).
  Ptr_CommonExpr is_null() const;
  Ptr_CommonExpr is_not_null() const;
  ///@}
  ///@{
  /// Lists and patterns of safe values, each written as SafeValue writes it
  /// in the column's dialect: "c IN ('a','b''s')", "c NOT IN (...)", and
  /// "c LIKE 'pattern' ESCAPE '\'" (see SafeValue::escape_like):
  /// `c.in_values({vexel::SafeValue(1), vexel::SafeValue("x")})` renders
  /// "shop.items.qty IN (1,'x')". An empty in_values renders "1 = 0", which
  /// matches no row, and an empty not_in_values "1 = 1".
  Ptr_CommonExpr in_values(const std::vector<SafeValue>& values) const;
  Ptr_CommonExpr not_in_values(const std::vector<SafeValue>& values) const;
  Ptr_CommonExpr like_escaped(const SafeValue& pattern, char escape = '\\') const;
  ///@}

  // Conditions rendered with the statement's dialect.
  /// "c LIKE 'pattern'" (the pattern as given, not escaped).
  Ptr_CommonExpr like(const std::string& pattern) const;
  /// Case-insensitive LIKE: ILIKE on PostgreSQL ("shop.items.name ILIKE 'a%'"),
  /// LIKE elsewhere ("... LIKE 'a%'").
  Ptr_CommonExpr ilike(const std::string& pattern) const;
  /// "c NOT LIKE 'pattern'" in every dialect; the pattern goes in as given,
  /// as like()'s does.
  Ptr_CommonExpr not_like(const std::string& pattern) const;
  /// "c NOT ILIKE 'pattern'" on PostgreSQL, "c NOT LIKE 'pattern'" elsewhere.
  Ptr_CommonExpr not_ilike(const std::string& pattern) const;
  /// PostgreSQL and SQL Server "c SIMILAR TO 'x%'", SQLite "c LIKE  'x%'".
  Ptr_CommonExpr similar_to(const SQLValue& v) const;
  ///@{
  /// Regular expressions: regexp is case-insensitive, regexp_cap
  /// case-sensitive. PostgreSQL and SQL Server write the operators `~*`,
  /// `~`, `!~*`, `!~` ("shop.items.name ~* '^a'"). On SQLite they call
  /// regexp(text, pattern, mode), which the host registers on its
  /// connections: "regexp(items.name , '^a',0)", mode 0 to 3 in the order
  /// regexp, regexp_cap, not_regexp, not_regexp_cap.
  Ptr_CommonExpr regexp(const std::string& pattern) const;
  Ptr_CommonExpr regexp_cap(const std::string& pattern) const;
  Ptr_CommonExpr not_regexp(const std::string& pattern) const;
  Ptr_CommonExpr not_regexp_cap(const std::string& pattern) const;
  ///@}
  /// Full-text match on the bare column name, without schema or table:
  /// PostgreSQL "a @@ to_tsquery('cat dog')", SQL Server and SQLite
  /// "a LIKE '%cat dog%'".
  Ptr_CommonExpr full_text_search(const std::string& words) const;
  ///@{
  /// Bitwise exclusive or: PostgreSQL "shop.items.a # 3", SQL Server
  /// "shop.items.a#3", SQLite "(items.a & ~(3))|(3 & ~items.a)".
  Ptr_CommonExpr XOR(const SQLValue& v) const;
  Ptr_CommonExpr XOR(const SQLExpr& e) const;
  ///@}

  /// Bit-string values ('0'/'1' text): PostgreSQL bit operators, or on SQLite
  /// the str_bit_* functions the host registers. `c.str_bit_and("0101")`
  /// renders "c & B'0101'" on PostgreSQL and SQL Server, and
  /// "str_bit_and(items.c,'0101')" on SQLite.
  Ptr_CommonExpr str_bit_and(const std::string& bits) const;
  /// "c | B'01'"; SQLite "str_bit_or(items.c,'01')".
  Ptr_CommonExpr str_bit_or(const std::string& bits) const;
  /// "c # B'01'"; SQLite "str_bit_xor(items.c,'01')".
  Ptr_CommonExpr str_bit_xor(const std::string& bits) const;
  /// "~c"; SQLite "str_bit_not(items.c)".
  Ptr_CommonExpr str_bit_not() const;
  /// "c << 2"; SQLite "str_bit_shift_left(items.c,2)".
  Ptr_CommonExpr str_bit_shift_left(int n) const;
  /// "c >> 2"; SQLite "str_bit_shift_right(items.c,2)".
  Ptr_CommonExpr str_bit_shift_right(int n) const;

 protected:
  /// For derived columns: the qualified text of a column whose type is not a function.
  std::string plain_text(bool drop_schema) const;
  /// For derived columns: the text of a function copied into a plain column.
  std::string function_text(tessel::DBTYPE db) const;
  /// For derived columns: appends the text a plain col renders: a function's as in dialect `db`,
  /// a plain column's without its schema when `drop_schema`.
  void append_text(std::string& out, tessel::DBTYPE db, bool drop_schema) const;

  ///@{
  /// The column's texts as stored, for derived columns.
  std::string_view schema_part() const { return parts_.get(ColumnParts::kSchema); }
  std::string_view table_part() const { return parts_.get(ColumnParts::kTable); }
  std::string_view name_part() const { return parts_.get(ColumnParts::kName); }
  std::string_view order_part() const { return parts_.get(ColumnParts::kOrder); }
  ///@}
  /// Appends to the column text, for derived columns.
  void append_name(std::string_view text) { parts_.append(ColumnParts::kName, text); }

  ///@{
  /// The column's flags and dialect, for derived columns.
  bool excluded_ = false;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  ColType col_type_ = ColumnPlain;
  ///@}

 private:
  friend struct internal::ColumnText;
  col(std::string_view schema, std::string_view table, std::string_view name, tessel::DBTYPE db)
      : db_type_(db), parts_(schema, table, name) {}

  ColumnParts parts_;
};

}  // namespace vexel

#endif  // VEXEL_COL_H
