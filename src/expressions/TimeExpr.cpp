#include "vexel/TimeExpr.h"

namespace vexel {
namespace {

// Only the names and the column type are kept: the stored column renders
// with the default dialect whatever the argument carried.
col stored_column(const col& c) {
  col copy(c.only_col_name());
  copy.set_schema_name(c.only_schema_name());
  copy.set_table_name(c.only_table_name());
  copy.set_col_type(c.col_type());
  return copy;
}

const char* unit_word(TimeType unit) {
  switch (unit) {
    case YEAR:
      return "year";
    case MONTH:
      return "month";
    case DAY:
      return "day";
    case HOUR:
      return "hour";
    case MINUTE:
      return "minute";
    case SECOND:
      return "second";
  }
  return nullptr;
}

const char* strftime_format(TimeType unit) {
  switch (unit) {
    case YEAR:
      return "%Y";
    case MONTH:
      return "%m";
    case DAY:
      return "%d";
    case HOUR:
      return "%H";
    case MINUTE:
      return "%M";
    case SECOND:
      return "%S";
  }
  return nullptr;
}

// SQLite has no date_trunc: the time is reformatted with the finer fields
// zeroed.
const char* truncating_format(TimeType unit) {
  switch (unit) {
    case YEAR:
      return "%Y-01-01 00:00:00";
    case MONTH:
      return "%Y-%m-01 00:00:00";
    case DAY:
      return "%Y-%m-%d 00:00:00";
    case HOUR:
      return "%Y-%m-%d %H:00:00";
    case MINUTE:
      return "%Y-%m-%d %H:%M:00";
    case SECOND:
      return "%Y-%m-%d %H:%M:%S";
  }
  return nullptr;
}

// A positive amount keeps its digits; zero or a negative amount loses its
// first character, so -3 gives "3" and 0 gives "" (written as a subtraction
// of nothing, which hosts depend on).
std::string amount_digits(int amount) {
  const std::string digits = std::to_string(amount);
  return amount > 0 ? digits : digits.substr(1);
}

}  // namespace

TimeExpr::TimeExpr(Kind kind, const std::string& value) : kind_(kind), value_(value) {}

TimeExpr::TimeExpr(Kind kind, const TimeType& unit, const std::string& value)
    : kind_(kind), unit_(unit), value_(value) {}

TimeExpr::TimeExpr(const col& first, const col& second)
    : kind_(kTimeDiff), first_(stored_column(first)), second_(stored_column(second)) {}

TimeExpr::TimeExpr(const col& first, const std::map<std::string, int>& offsets)
    : kind_(kTimeAlgorithm), first_(stored_column(first)), offsets_(offsets) {}

std::string TimeExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  switch (db_type) {
    case tessel::DB_SQLITE:
      return sqlite_text();
    case tessel::DB_POSTGRESQL:
      return postgres_text();
    case tessel::DB_SQLSERVER:
    default:
      // Only CURRENT_TIMESTAMP has a text here, the PostgreSQL one.
      return kind_ == kCurrentTimestamp ? postgres_text() : std::string();
  }
}

void TimeExpr::set_table_name(const std::string& /*table_name*/) {}

std::string TimeExpr::postgres_text() const {
  const std::string& v = value_;
  switch (kind_) {
    case kNow:
      return v == "0" ? "now() at time zone 'UTC'" : "now()";
    case kCurrentTimestamp:
      return v == "0" ? "CURRENT_TIMESTAMP at time zone 'UTC'" : "CURRENT_TIMESTAMP";
    case kDate:
      return "date '" + v + "'";
    case kTime:
      return "time '" + v + "'";
    case kExtract:
      return "extract(epoch from timestamp without time zone '" + v + "')";
    case kDatePart: {
      const char* word = unit_word(unit_);
      if (word == nullptr) return std::string();
      return std::string("date_part('") + word + "', TIMESTAMP '" + v + "')";
    }
    case kTimeDiff:
      return "EXTRACT(EPOCH FROM timestamp '" + first_.col_name() +
             "') - EXTRACT(EPOCH FROM timestamp '" + second_.col_name() + "')";
    case kTimeAlgorithm:
      return postgres_offsets();
    case kDateTrunc: {
      const char* word = unit_word(unit_);
      if (word == nullptr) return std::string();
      // The value is not quoted: "::timestamp" follows a column or a literal
      // the host quoted itself.
      return std::string("date_trunc('") + word + "', " + v + "::timestamp)";
    }
  }
  return std::string();
}

std::string TimeExpr::sqlite_text() const {
  const std::string& v = value_;
  switch (kind_) {
    case kNow:
      return v == "1" ? "DATETIME('now','localtime')" : "DATETIME('now')";
    case kCurrentTimestamp:
      return v == "1" ? "datetime(CURRENT_TIMESTAMP,'localtime')" : "CURRENT_TIMESTAMP";
    case kDate:
      return "DATE('" + v + "')";
    case kTime:
      return "TIME('" + v + "')";
    case kExtract:
      return "strftime('%s','" + v + "')";
    case kDatePart: {
      const char* format = strftime_format(unit_);
      if (format == nullptr) return std::string();
      return std::string("strftime('") + format + "', '" + v + "')";
    }
    case kTimeDiff:
      return "strftime('%s', '" + first_.col_name() + "') - strftime('%s', '" + second_.col_name() +
             "')";
    case kTimeAlgorithm:
      return sqlite_offsets();
    case kDateTrunc: {
      const char* format = truncating_format(unit_);
      if (format == nullptr) return std::string();
      return std::string("strftime('") + format + "', " + v + ")";
    }
  }
  return std::string();
}

// "timestamp 'a' + interval '1 day'- interval '2 hour'": the intervals follow
// each other without a blank, and an empty map leaves the trailing blank.
std::string TimeExpr::postgres_offsets() const {
  std::string text = "timestamp '" + first_.col_name() + "' ";
  for (const auto& entry : offsets_) {
    const char* sign = entry.second > 0 ? "+" : "-";
    text +=
        std::string(sign) + " interval '" + amount_digits(entry.second) + " " + entry.first + "'";
  }
  return text;
}

// "datetime('a', '+1 day', '-2 hour')".
std::string TimeExpr::sqlite_offsets() const {
  std::string text = "datetime('" + first_.col_name() + "'";
  for (const auto& entry : offsets_) {
    const char* sign = entry.second > 0 ? "+" : "-";
    text += std::string(", '") + sign + amount_digits(entry.second) + " " + entry.first + "'";
  }
  return text + ")";
}

TimeExpr NOW(const int& zone) { return TimeExpr(TimeExpr::kNow, std::to_string(zone)); }
TimeExpr CURRENT_TIMESTAMP(const int& zone) {
  return TimeExpr(TimeExpr::kCurrentTimestamp, std::to_string(zone));
}
TimeExpr DATE(const std::string& value) { return TimeExpr(TimeExpr::kDate, value); }
TimeExpr TIME(const std::string& value) { return TimeExpr(TimeExpr::kTime, value); }
TimeExpr EXTRACT(const std::string& value) { return TimeExpr(TimeExpr::kExtract, value); }
TimeExpr DATE_PART(const TimeType& unit, const std::string& value) {
  return TimeExpr(TimeExpr::kDatePart, unit, value);
}
TimeExpr DATE_TRUNC(const TimeType& unit, const std::string& value) {
  return TimeExpr(TimeExpr::kDateTrunc, unit, value);
}
TimeExpr TIMEDIFF(const std::string& a, const std::string& b) { return TimeExpr(col(a), col(b)); }
TimeExpr TIMEDIFF(const col& a, const col& b) { return TimeExpr(a, b); }
TimeExpr TIMEDIFF(const col& a, const std::string& b) { return TimeExpr(a, col(b)); }
TimeExpr TIMEDIFF(const char* a, const char* b) { return TimeExpr(col(a), col(b)); }
TimeExpr TIMEDIFF(const std::string& a, const char* b) { return TimeExpr(col(a), col(b)); }
TimeExpr TIMEDIFF(const char* a, const std::string& b) { return TimeExpr(col(a), col(b)); }
TimeExpr TIMEDIFF(const col& a, const char* b) { return TimeExpr(a, col(b)); }
TimeExpr TIME_ALGORITHM(const std::string& a, const std::map<std::string, int>& offsets) {
  return TimeExpr(col(a), offsets);
}
TimeExpr TIME_ALGORITHM(const col& a, const std::map<std::string, int>& offsets) {
  return TimeExpr(a, offsets);
}
TimeExpr TIME_ALGORITHM(const char* a, const std::map<std::string, int>& offsets) {
  return TimeExpr(col(a), offsets);
}

}  // namespace vexel
