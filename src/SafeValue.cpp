#include "vexel/SafeValue.h"

#include <charconv>
#include <cmath>
#include <memory>
#include <system_error>

#include "internal/Text.h"

namespace vexel {
namespace {

// The length of the valid UTF-8 sequence at `at`, or 0.
std::size_t utf8_sequence(const std::string& s, std::size_t at) {
  const auto byte = [&s](std::size_t i) { return static_cast<unsigned char>(s[i]); };
  const unsigned char lead = byte(at);
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;  // the range of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;   // no overlong forms
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;  // nothing above U+10FFFF
  } else {
    return 0;
  }
  if (at + length > s.size()) return 0;
  if (byte(at + 1) < low || byte(at + 1) > high) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return 0;
  }
  return length;
}

template <typename Float>
std::string shortest(Float v) {
  char digits[64];
  const std::to_chars_result r = std::to_chars(digits, digits + sizeof digits, v);
  return r.ec == std::errc() ? std::string(digits, r.ptr) : std::string();
}

void put_padded(std::string& out, long long value, int width) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  for (auto n = end - digits; n < width; ++n) out += '0';
  out.append(digits, end);
}

bool leap(long long y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int days_in_month(long long y, int m) {
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && leap(y) ? 29 : days[m - 1];
}

std::string date_text(long long y, int m, int d) {
  std::string out;
  put_padded(out, y, 4);
  out += '-';
  put_padded(out, m, 2);
  out += '-';
  put_padded(out, d, 2);
  return out;
}

}  // namespace

SafeValue::SafeValue() = default;
SafeValue::SafeValue(std::nullptr_t) {}
SafeValue::SafeValue(bool v) : kind_(Kind::kBool), flag_(v) {}

SafeValue::SafeValue(bool negative, std::uint64_t magnitude) : kind_(Kind::kNumber) {
  char digits[24];
  // A negative value arrives as -(v + 1), which fits the unsigned range.
  const std::uint64_t shown = negative ? magnitude + 1 : magnitude;
  const auto end = std::to_chars(digits, digits + sizeof digits, shown).ptr;
  if (negative) text_ += '-';
  text_.append(digits, end);
}

SafeValue::SafeValue(double v) : kind_(Kind::kNumber), flag_(true) {
  if (!std::isfinite(v)) {
    *this = refused("NaN or an infinity");
    return;
  }
  text_ = shortest(v);
}

SafeValue::SafeValue(float v) : kind_(Kind::kNumber), flag_(true) {
  if (!std::isfinite(v)) {
    *this = refused("NaN or an infinity");
    return;
  }
  text_ = shortest(v);
}

SafeValue::SafeValue(const std::string& text) : kind_(Kind::kText) {
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte == 0) {
      *this = refused("a NUL byte");
      return;
    }
    if (byte < 0x80) {
      ++at;
      continue;
    }
    const std::size_t length = utf8_sequence(text, at);
    if (length == 0) {
      *this = refused("invalid UTF-8");
      return;
    }
    flag_ = true;
    at += length;
  }
  text_ = text;
}

SafeValue::SafeValue(const char* text) : SafeValue(std::string(text != nullptr ? text : "")) {
  if (text == nullptr) *this = SafeValue();
}

SafeValue::SafeValue(std::chrono::system_clock::time_point at) : kind_(Kind::kText) {
  using namespace std::chrono;
  const auto micros = duration_cast<microseconds>(at.time_since_epoch()).count();
  long long days = micros / 86400000000LL;
  long long rest = micros % 86400000000LL;
  if (rest < 0) {
    rest += 86400000000LL;
    --days;
  }
  // Days since 1970-01-01 to the civil date (proleptic Gregorian).
  const long long z = days + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  const int d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  const long long y = yoe + era * 400 + (m <= 2 ? 1 : 0);
  text_ = date_text(y, m, d);
  text_ += ' ';
  put_padded(text_, rest / 3600000000LL, 2);
  text_ += ':';
  put_padded(text_, rest / 60000000LL % 60, 2);
  text_ += ':';
  put_padded(text_, rest / 1000000 % 60, 2);
  if (rest % 1000000 != 0) {
    text_ += '.';
    put_padded(text_, rest % 1000000, 6);
  }
}

SafeValue SafeValue::date(int year, int month, int day) {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 ||
      day > days_in_month(year, month)) {
    return refused("a date that does not exist");
  }
  SafeValue v;
  v.kind_ = Kind::kText;
  v.text_ = date_text(year, month, day);
  return v;
}

std::string SafeValue::escape_like(const std::string& text, char escape) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    if (c == '%' || c == '_' || c == escape) out += escape;
    out += c;
  }
  return out;
}

// The reason travels in the text: the statement that holds the value logs
// it when it refuses to run, once, under the operation that was asked.
SafeValue SafeValue::refused(const char* why) {
  SafeValue v;
  v.kind_ = Kind::kRefused;
  v.text_ = why;
  return v;
}

std::string SafeValue::GetExpr(const tessel::DBTYPE& db_type) const {
  switch (kind_) {
    case Kind::kNull:
      return "NULL";
    case Kind::kRefused:
      // A NUL byte: the execution path runs no statement that holds it, and a
      // driver that reads the text as a C string stops where the value was.
      return internal::refused_value_text(text_);
    case Kind::kBool:
      // Only PostgreSQL has a boolean literal that a boolean column takes.
      if (db_type == tessel::DB_SQLITE || db_type == tessel::DB_SQLSERVER) return flag_ ? "1" : "0";
      return flag_ ? "TRUE" : "FALSE";
    case Kind::kNumber:
      if (text_ == "-0") {
        // A bare -0 is the integer 0 (and -0.0 is exact numeric 0 on
        // PostgreSQL): only these keep the sign of a negative zero.
        if (db_type == tessel::DB_SQLITE) return "-0.0";
        if (db_type == tessel::DB_SQLSERVER) return "CAST('-0' AS FLOAT)";
        return "CAST('-0' AS DOUBLE PRECISION)";
      }
      return text_;
    case Kind::kText:
      break;
  }
  std::string out;
  out.reserve(text_.size() + 3);
  // SQL Server keeps text outside its code page only in a national literal.
  const bool sqlserver = db_type == tessel::DB_SQLSERVER;
  const char* open = flag_ && sqlserver ? "N'" : "'";
  out += open;
  char previous = 0;
  for (char c : text_) {
    if (sqlserver && previous == '\\' && (c == '\n' || c == '\r')) {
      // SQL Server drops a backslash-newline inside a literal: the line
      // break goes outside it.
      out.append("'+CHAR(").append(c == '\n' ? "10" : "13").append(")+").append(open);
      previous = 0;
      continue;
    }
    if (c == '\'') out += '\'';
    out += c;
    previous = c;
  }
  out += '\'';
  return out;
}

tessel::Param SafeValue::param() const {
  tessel::Param p;
  switch (kind_) {
    case Kind::kBool:
      p.kind = tessel::Param::Kind::kBool;
      p.text = flag_ ? "true" : "false";
      break;
    case Kind::kNumber:
      p.kind = flag_ ? tessel::Param::Kind::kReal : tessel::Param::Kind::kInteger;
      p.text = text_;
      break;
    case Kind::kText:
      p.kind = tessel::Param::Kind::kText;
      p.text = text_;
      break;
    default:
      break;
  }
  return p;
}

void SafeValue::set_table_name(const std::string& /*table_name*/) {}

SafeValue::operator SQLValue() const {
  SQLValue v;
  v.value_ = GetExpr(tessel::DB_POSTGRESQL);
  v.per_dialect_ = std::make_shared<SafeValue>(*this);
  return v;
}

}  // namespace vexel
