/// \file
/// Date and time functions. Each free function returns a TimeExpr that
/// records the call and renders it with the statement's dialect: PostgreSQL
/// and SQLite have their own texts; SQL Server gets an empty text from every
/// function but CURRENT_TIMESTAMP. Arguments are inserted as given, never
/// quoted or escaped by the library.
///
/// \code
/// q.SELECT(vexel::DATE_PART(vexel::YEAR, "2021-01-02"));
/// \endcode
#ifndef VEXEL_TIMEEXPR_H
#define VEXEL_TIMEEXPR_H

#include <cstdint>
#include <map>
#include <string>

#include "vexel/CommonExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

/// Unit of DATE_PART and DATE_TRUNC; any other value renders an empty text.
enum TimeType : int32_t {
  /// Year ('year', '%Y').
  YEAR = 1,
  /// Month.
  MONTH = 2,
  /// Day.
  DAY = 3,
  /// Hour.
  HOUR = 4,
  /// Minute.
  MINUTE = 5,
  /// Second.
  SECOND = 6,
};

/// A date or time expression (made by NOW, DATE, DATE_PART, TIMEDIFF and the
/// other time functions). SQL Server has no text for most of them: they
/// render "" there, so a condition over one is empty.
class VEXEL_API TimeExpr : public CommonExpr {
 public:
  /// Which function built the node.
  enum Kind : int32_t {
    ///@{
    kNow = 1,
    kCurrentTimestamp = 2,
    kDate = 3,
    kTime = 4,
    kExtract = 5,
    kDatePart = 6,
    kTimeDiff = 7,
    kTimeAlgorithm = 8,
    kDateTrunc = 9,
    ///@}
  };

  ///@{
  /// A node of the given function over `value`, a unit and value, two columns,
  /// or a column and offsets; the free functions make them.
  TimeExpr(Kind kind, const std::string& value);
  TimeExpr(Kind kind, const TimeType& unit, const std::string& value);
  TimeExpr(const col& first, const col& second);
  TimeExpr(const col& first, const std::map<std::string, int>& offsets);
  ///@}
  ///@{
  /// Plain value.
  TimeExpr(const TimeExpr&) = default;
  TimeExpr(TimeExpr&&) = default;
  TimeExpr& operator=(const TimeExpr&) = default;
  TimeExpr& operator=(TimeExpr&&) = default;
  ///@}
  ~TimeExpr() override = default;

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string postgres_text() const;
  std::string sqlite_text() const;
  std::string postgres_offsets() const;
  std::string sqlite_offsets() const;

  Kind kind_;
  col first_;
  col second_;
  TimeType unit_ = YEAR;
  std::string value_;
  std::map<std::string, int> offsets_;
};

/// The current time: `NOW(0)` renders PostgreSQL "now() at time zone 'UTC'",
/// SQLite "DATETIME('now')", SQL Server "".
///
/// zone 0 asks for UTC, 1 for local time; any other number for neither.
VEXEL_API TimeExpr NOW(const int& zone);
/// `CURRENT_TIMESTAMP(0)`: "CURRENT_TIMESTAMP at time zone 'UTC'" on PostgreSQL
/// and SQL Server, "CURRENT_TIMESTAMP" on SQLite.
VEXEL_API TimeExpr CURRENT_TIMESTAMP(const int& zone);
/// A date literal: PostgreSQL "date '2024-01-02'", SQLite "DATE('2024-01-02')".
VEXEL_API TimeExpr DATE(const std::string& value);
/// A time literal: PostgreSQL "time '10:00:00'", SQLite "TIME('10:00:00')".
VEXEL_API TimeExpr TIME(const std::string& value);
/// PostgreSQL "extract(epoch from timestamp without time zone '2024-01-02')",
/// SQLite "strftime('%s','2024-01-02')".
///
/// Seconds since the epoch.
VEXEL_API TimeExpr EXTRACT(const std::string& value);
/// One part of a time: `DATE_PART(YEAR, "2024-01-02")` renders PostgreSQL
/// "date_part('year', TIMESTAMP '2024-01-02')", SQLite "strftime('%Y', '2024-01-02')".
VEXEL_API TimeExpr DATE_PART(const TimeType& unit, const std::string& value);
/// `DATE_TRUNC(MONTH, "created")`: PostgreSQL "date_trunc('month', created::timestamp)",
/// SQLite "strftime('%Y-%m-01 00:00:00', created)".
///
/// `value` is not quoted: pass a column name or an already quoted literal.
VEXEL_API TimeExpr DATE_TRUNC(const TimeType& unit, const std::string& value);
///@{
/// PostgreSQL "EXTRACT(EPOCH FROM timestamp 'a') - EXTRACT(EPOCH FROM timestamp 'b')",
/// SQLite "strftime('%s', 'a') - strftime('%s', 'b')".
///
/// Seconds from b to a. Columns are written inside single quotes like texts.
VEXEL_API TimeExpr TIMEDIFF(const std::string& a, const std::string& b);
VEXEL_API TimeExpr TIMEDIFF(const col& a, const col& b);
VEXEL_API TimeExpr TIMEDIFF(const col& a, const std::string& b);
/// String literals would be ambiguous between the text and column forms;
/// these take them as texts.
VEXEL_API TimeExpr TIMEDIFF(const char* a, const char* b);
VEXEL_API TimeExpr TIMEDIFF(const std::string& a, const char* b);
VEXEL_API TimeExpr TIMEDIFF(const char* a, const std::string& b);
VEXEL_API TimeExpr TIMEDIFF(const col& a, const char* b);
///@}
///@{
/// `TIME_ALGORITHM(c, {{"day", 1}, {"hour", -2}})`: PostgreSQL
/// "timestamp 'shop.items.a' + interval '1 day'- interval '2 hour'", SQLite
/// "datetime('shop.items.a', '+1 day', '-2 hour')".
///
/// `a` moved by signed amounts per unit word ({"day", 1}, {"hour", -2}), in
/// the map's key order.
VEXEL_API TimeExpr TIME_ALGORITHM(const std::string& a, const std::map<std::string, int>& offsets);
VEXEL_API TimeExpr TIME_ALGORITHM(const col& a, const std::map<std::string, int>& offsets);
VEXEL_API TimeExpr TIME_ALGORITHM(const char* a, const std::map<std::string, int>& offsets);
///@}

}  // namespace vexel

#endif  // VEXEL_TIMEEXPR_H
