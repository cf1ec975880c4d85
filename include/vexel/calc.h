/// @file
/// Computed values: arithmetic, string, date and cast functions over columns,
/// literals and scalar subqueries.
///
/// A `calc` is a column whose text is a finished expression, so it stands
/// wherever a column stands (select lists, GROUP BY, ORDER BY, SET values,
/// aggregates) and compares like one (`calc > SQLValue(100)`, `.in(...)`,
/// `.is_null()`). Unlike the column arithmetic `col + col`, which extends the
/// column in place, these operators return a new value and leave their
/// operands alone, and they write the brackets that keep the precedence:
///
///     vexel::calc revenue = l.col("price") * l.col("qty") * (1 - vexel::calc(l.col("disc")));
///     // l.price * l.qty * (1 - l.disc)
///
/// The text is written once, in the dialect of the first column (or subquery)
/// among the operands; an expression of literals alone waits for one and is
/// written in PostgreSQL's forms if none comes (`for_dialect` picks one).
/// Integer division truncates toward zero on all three engines (7 / 2 is 3);
/// make one operand a double (`CAST(x, CastType::Double)` or a literal 2.0)
/// for a fractional result.
#ifndef VEXEL_CALC_H
#define VEXEL_CALC_H

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "tessel/DBType.h"
#include "vexel/SQLValue.h"
#include "vexel/SafeValue.h"
#include "vexel/TimeExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

class CommonExpr;
class QueryBuilder;

/// A computed value: a column whose text is a finished expression.
class VEXEL_API calc : public col {
 public:
  /// How tightly the text binds, for the brackets an operator writes around
  /// its operands.
  enum Level : std::int8_t {
    kLowest = 0,          ///< anything else: bracketed wherever it is an operand
    kConcat = 1,          ///< a || b (a + b on SQL Server)
    kAdditive = 2,        ///< a + b, a - b
    kMultiplicative = 3,  ///< a * b, a / b, a % b
    kUnary = 4,           ///< -a, and negative numbers
    kAtom = 5,            ///< columns, literals, calls, bracketed texts
  };

  /// The column's text in its own dialect. A column that holds an operator
  /// (after the in-place `col + col`) is bracketed where it becomes an operand.
  calc(const col& c);
  /// A literal, written as SafeValue writes it in the expression's dialect.
  calc(const SafeValue& v);
  /// Any number or bool, as a SafeValue: `calc(2)`, `calc(0.5)`.
  template <typename T, std::enable_if_t<
                            std::is_arithmetic<T>::value && !std::is_same<T, char>::value, int> = 0>
  calc(T v) : calc(SafeValue(v)) {}
  /// A literal whose text is fixed (SQLValue texts are not escaped).
  calc(const SQLValue& v);
  /// A scalar subquery, "(SELECT ...)", in the builder's dialect.
  calc(const QueryBuilder& subquery);
  /// A node (a CASE, a condition, a time function) rendered in dialect `db`.
  calc(const CommonExpr& e, tessel::DBTYPE db);

  ///@{
  /// Copies and moves keep the text, level and any waiting form.
  calc(const calc&) = default;
  calc(calc&&) = default;
  calc& operator=(const calc&) = default;
  calc& operator=(calc&&) = default;
  ///@}
  ~calc() override = default;

  /// How tightly the text binds.
  Level level() const { return level_; }
  /// Whether the text was fixed by a column or subquery dialect rather than
  /// waiting for one.
  bool has_dialect() const { return render_ == nullptr; }
  /// The same expression written in dialect `db` when it has no dialect yet;
  /// otherwise an unchanged copy.
  calc for_dialect(tessel::DBTYPE db) const;

  /// Writes the text of an expression of one or more operands: `render`
  /// gets the dialect and the operands' texts, each already bracketed when
  /// its level is below the one its slot asks for. The first operand with a
  /// dialect gives it; without one the result waits for one.
  /// A host's own function over calcs is written this way:
  /// \code
  /// vexel::calc ABS(const vexel::calc& x) {
  ///   return vexel::calc::make({{x, vexel::calc::kLowest}}, vexel::calc::kAtom,
  ///                            [](tessel::DBTYPE, const std::vector<std::string>& t) {
  ///                              return "ABS(" + t[0] + ")";
  ///                            });
  /// }
  /// \endcode
  using Render = std::function<std::string(tessel::DBTYPE, const std::vector<std::string>&)>;
  /// One operand of make().
  struct Operand {
    const calc& value;  ///< the operand
    Level at_least;     ///< bracketed when the operand binds less tightly
  };
  /// The expression of `operands` that `render` writes, binding at `level`.
  static calc make(const std::vector<Operand>& operands, Level level, Render render);

  /// The arithmetic operators.
  enum Op : int { kAdd, kSubtract, kMultiply, kDivide, kModulo };
  /// The arithmetic operators' work: "a op b" with the brackets it needs; an
  /// `op` out of range gives `a` unchanged.
  static calc arithmetic(const calc& a, Op op, const calc& b);
  /// The comparisons.
  enum Comparison : int { kEqual, kNotEqual, kLess, kLessOrEqual, kGreater, kGreaterOrEqual };
  /// The comparison operators' work: the finished condition "a op b"; an
  /// `op` out of range gives an empty condition.
  static Ptr_CommonExpr compare(const calc& a, Comparison op, const calc& b);

 private:
  struct Recipe;
  calc(std::string text, Level level, tessel::DBTYPE db, std::shared_ptr<const Recipe> render);
  // The text in dialect `db`: written again when it waits for a dialect.
  std::string text_in(tessel::DBTYPE db) const;
  // `render` over the operands' texts in dialect `db`, each bracketed below
  // its slot's level; `List` holds Operands or the Recipe's copies of them.
  template <typename List>
  static std::string write(const List& operands, tessel::DBTYPE db, const Render& render);

  Level level_ = kAtom;
  // Set while the expression has no dialect: how to write it in one.
  std::shared_ptr<const Recipe> render_;
};

namespace internal {
template <typename T>
constexpr bool is_col_v = std::is_base_of<col, T>::value;
template <typename T>
constexpr bool is_calc_v = std::is_base_of<calc, T>::value;
template <typename T>
constexpr bool is_literal_v = (std::is_arithmetic<T>::value && !std::is_same<T, char>::value) ||
                              std::is_same<T, SafeValue>::value || std::is_same<T, SQLValue>::value;
template <typename T>
constexpr bool is_operand_v = is_col_v<T> || is_literal_v<T>;
// + and - between a plain column and a value keep their in-place meaning
// (`col + 1` extends the column); they make a calc only when a calc takes
// part or a value comes first.
template <typename A, typename B>
constexpr bool sum_operands_v = is_operand_v<A>&& is_operand_v<B> &&
                                (is_calc_v<A> || is_calc_v<B> || (!is_col_v<A> && is_col_v<B>));
template <typename A, typename B>
constexpr bool product_operands_v = is_operand_v<A>&& is_operand_v<B> &&
                                    (is_col_v<A> || is_col_v<B>);
template <typename A, typename B>
constexpr bool comparison_operands_v = is_operand_v<A>&& is_operand_v<B> &&
                                       (is_calc_v<A> || is_calc_v<B>);
}  // namespace internal

/// Arithmetic on columns, calcs, numbers and values: "a + b", "a - b",
/// "a * b", "a / b", "a % b" (on SQLite % takes its operands as integers).
/// `col + col` and `col - x` keep their in-place meaning; start such a sum
/// from a calc (`vexel::calc(a) + b`) or put the value first (`1 - a`).
///@{
// Forwarding references: the column's own + and - take a non-const column,
// which a const reference would lose to.
template <typename A, typename B,
          std::enable_if_t<internal::sum_operands_v<std::decay_t<A>, std::decay_t<B>>, int> = 0>
calc operator+(A&& a, B&& b) {
  return calc::arithmetic(a, calc::kAdd, b);
}
template <typename A, typename B,
          std::enable_if_t<internal::sum_operands_v<std::decay_t<A>, std::decay_t<B>>, int> = 0>
calc operator-(A&& a, B&& b) {
  return calc::arithmetic(a, calc::kSubtract, b);
}
template <typename A, typename B, std::enable_if_t<internal::product_operands_v<A, B>, int> = 0>
calc operator*(const A& a, const B& b) {
  return calc::arithmetic(a, calc::kMultiply, b);
}
template <typename A, typename B, std::enable_if_t<internal::product_operands_v<A, B>, int> = 0>
calc operator/(const A& a, const B& b) {
  return calc::arithmetic(a, calc::kDivide, b);
}
template <typename A, typename B, std::enable_if_t<internal::product_operands_v<A, B>, int> = 0>
calc operator%(const A& a, const B& b) {
  return calc::arithmetic(a, calc::kModulo, b);
}
///@}
/// Comparisons where a calc takes part: "a = b", "a != b", "a < b",
/// "a <= b", "a > b", "a >= b", each operand written in the dialect of the
/// first one that has one. (`calc < x` is a condition; between two plain
/// columns `<` still orders them.)
///@{
template <typename A, typename B, std::enable_if_t<internal::comparison_operands_v<A, B>, int> = 0>
Ptr_CommonExpr operator==(const A& a, const B& b) {
  return calc::compare(a, calc::kEqual, b);
}
template <typename A, typename B, std::enable_if_t<internal::comparison_operands_v<A, B>, int> = 0>
Ptr_CommonExpr operator!=(const A& a, const B& b) {
  return calc::compare(a, calc::kNotEqual, b);
}
template <typename A, typename B, std::enable_if_t<internal::comparison_operands_v<A, B>, int> = 0>
Ptr_CommonExpr operator<(const A& a, const B& b) {
  return calc::compare(a, calc::kLess, b);
}
template <typename A, typename B, std::enable_if_t<internal::comparison_operands_v<A, B>, int> = 0>
Ptr_CommonExpr operator<=(const A& a, const B& b) {
  return calc::compare(a, calc::kLessOrEqual, b);
}
template <typename A, typename B, std::enable_if_t<internal::comparison_operands_v<A, B>, int> = 0>
Ptr_CommonExpr operator>(const A& a, const B& b) {
  return calc::compare(a, calc::kGreater, b);
}
template <typename A, typename B, std::enable_if_t<internal::comparison_operands_v<A, B>, int> = 0>
Ptr_CommonExpr operator>=(const A& a, const B& b) {
  return calc::compare(a, calc::kGreaterOrEqual, b);
}
///@}
/// "-a"; an operand that is not a column, a call or a positive number is
/// bracketed ("-(a + b)", "-(-1)").
VEXEL_API calc operator-(const calc& a);

///@{
/// Text functions, the same in every dialect: "LOWER(x)", "UPPER(x)", "TRIM(x)".
VEXEL_API calc LOWER(const calc& s);
VEXEL_API calc UPPER(const calc& s);
VEXEL_API calc TRIM(const calc& s);
///@}
/// LENGTH(s); LEN(s) on SQL Server, which does not count trailing blanks.
VEXEL_API calc LENGTH(const calc& s);
/// `length` characters from position `start` (the first is 1):
/// SUBSTRING(s FROM start FOR length) on PostgreSQL, SUBSTR(s, start, length)
/// on SQLite, SUBSTRING(s, start, length) on SQL Server.
VEXEL_API calc SUBSTRING(const calc& s, long long start, long long length);
/// The rest of `s` from position `start`.
VEXEL_API calc SUBSTRING(const calc& s, long long start);
/// The texts joined: a || b || c, or a + b + c on SQL Server (where every
/// operand must then be a text).
VEXEL_API calc CONCAT(std::initializer_list<calc> parts);

/// COALESCE(a, b, ...): the first operand that is not NULL.
VEXEL_API calc COALESCE(std::initializer_list<calc> values);
/// NULLIF(a, b): NULL when a equals b, else a.
VEXEL_API calc NULLIF(const calc& a, const calc& b);

/// The types CAST converts to.
enum class CastType {
  Integer,    ///< INTEGER; INT on SQL Server
  BigInt,     ///< BIGINT; INTEGER on SQLite
  Double,     ///< DOUBLE PRECISION; REAL on SQLite, FLOAT on SQL Server
  Text,       ///< TEXT; NVARCHAR(MAX) on SQL Server
  Date,       ///< DATE; on SQLite date(x), the text 'YYYY-MM-DD'
  Timestamp,  ///< TIMESTAMP; datetime(x) on SQLite, DATETIME2 on SQL Server
  Boolean,    ///< BOOLEAN; BIT on SQL Server, (CAST(x AS INTEGER) <> 0) on SQLite
};
/// CAST(x AS type) in the dialect's words for the type.
VEXEL_API calc CAST(const calc& x, CastType type);

/// Parts of a date or time.
enum class DateField {
  Year,
  Month,
  Day,
  Hour,
  Minute,
  Second,     ///< whole seconds
  DayOfWeek,  ///< 0 for Sunday to 6 for Saturday on every engine
  Epoch,      ///< whole seconds since 1970-01-01 00:00:00 UTC
};
/// A field of a date or timestamp as an integer:
/// CAST(EXTRACT(YEAR FROM d) AS INTEGER) on PostgreSQL,
/// CAST(strftime('%Y', d) AS INTEGER) on SQLite, DATEPART(year, d) on SQL Server.
VEXEL_API calc DATE_FIELD(DateField field, const calc& d);
/// A date moved by `amount` units (negative: back); the result is a date on
/// every engine, so it compares with a date text such as '1995-01-01' alike:
/// CAST(CAST(d AS DATE) + INTERVAL '3 month' AS DATE) on PostgreSQL,
/// date(d, '+3 months') on SQLite, CAST(DATEADD(month, 3, d) AS DATE) on SQL
/// Server. Units are YEAR, MONTH, DAY, HOUR, MINUTE and SECOND; any other
/// value leaves `d` unchanged.
VEXEL_API calc DATE_ADD(const calc& d, long long amount, TimeType unit);
/// The same for a timestamp, whose result is a timestamp.
VEXEL_API calc TIMESTAMP_ADD(const calc& t, long long amount, TimeType unit);

}  // namespace vexel

#endif  // VEXEL_CALC_H
