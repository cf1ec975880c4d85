#include "vexel/SQLValue.h"

#include <charconv>
#include <cstring>
#include <typeinfo>

#include "internal/Text.h"
#include "vexel/SQLExpr.h"

namespace vexel {
namespace {

std::string quoted(const char* s, std::size_t n) {
  if (n <= 13) {
    // A short text is built on the stack: it then lands in place in one copy.
    char small[15];
    small[0] = '\'';
    detail::copy_bytes(small + 1, s, n);
    small[n + 1] = '\'';
    return std::string(small, n + 2);
  }
  std::string text;
  text.reserve(n + 2);
  text.push_back('\'');
  text.append(s, n);
  text.push_back('\'');
  return text;
}
std::string quoted(const std::string& s) { return quoted(s.data(), s.size()); }
std::string quoted(const char* s) { return quoted(s, std::strlen(s)); }

// std::to_string's text, formatted on the stack and copied once.
template <typename T>
std::string number(T v) {
  char digits[24];
  const char* end = std::to_chars(digits, digits + sizeof digits, v).ptr;
  return std::string(digits, static_cast<std::size_t>(end - digits));
}

}  // namespace

// Narrow signed and unsigned short values are widened to int; unsigned int
// and unsigned long print as std::to_string(unsigned) would.
SQLValue::SQLValue(const short& v) : value_(number(static_cast<int>(v))) {}
SQLValue::SQLValue(const short& v, const tessel::DBTYPE& db) : SQLValue(v) { db_type_ = db; }
SQLValue::SQLValue(const unsigned short& v) : value_(number(static_cast<int>(v))) {}
SQLValue::SQLValue(const unsigned short& v, const tessel::DBTYPE& db) : SQLValue(v) {
  db_type_ = db;
}
SQLValue::SQLValue(const int& v) : value_(number(v)) {}
SQLValue::SQLValue(const int& v, const tessel::DBTYPE& db) : SQLValue(v) { db_type_ = db; }
SQLValue::SQLValue(const unsigned int& v) : value_(number(v)) {}
SQLValue::SQLValue(const unsigned int& v, const tessel::DBTYPE& db) : SQLValue(v) { db_type_ = db; }
SQLValue::SQLValue(const long& v) : value_(number(v)) {}
SQLValue::SQLValue(const long& v, const tessel::DBTYPE& db) : SQLValue(v) { db_type_ = db; }
SQLValue::SQLValue(const unsigned long& v) : value_(number(v)) {}
SQLValue::SQLValue(const unsigned long& v, const tessel::DBTYPE& db) : SQLValue(v) {
  db_type_ = db;
}
SQLValue::SQLValue(const long long& v) : value_(number(v)) {}
SQLValue::SQLValue(const long long& v, const tessel::DBTYPE& db) : SQLValue(v) { db_type_ = db; }
SQLValue::SQLValue(const unsigned long long& v) : value_(number(v)) {}
SQLValue::SQLValue(const unsigned long long& v, const tessel::DBTYPE& db) : SQLValue(v) {
  db_type_ = db;
}
// std::to_string's six decimals, but never the host locale's decimal comma.
SQLValue::SQLValue(const float& v) : value_(internal::fixed_six(v)) {}
SQLValue::SQLValue(const float& v, const tessel::DBTYPE& db) : SQLValue(v) { db_type_ = db; }
SQLValue::SQLValue(const double& v) : value_(internal::fixed_six(v)) {}
SQLValue::SQLValue(const double& v, const tessel::DBTYPE& db) : SQLValue(v) { db_type_ = db; }
// Strings are quoted but never escaped: callers depend on the text as given.
SQLValue::SQLValue(const std::string& s) : value_(quoted(s)) {}
SQLValue::SQLValue(const std::string& s, const tessel::DBTYPE& db) : SQLValue(s) { db_type_ = db; }
SQLValue::SQLValue(const char* s) : value_(quoted(s != nullptr ? s : "")) {}
SQLValue::SQLValue(const char* s, const tessel::DBTYPE& db) : SQLValue(s) { db_type_ = db; }
SQLValue::SQLValue(const SQLValue& v, const tessel::DBTYPE& db)
    : value_(v.value_), db_type_(db), per_dialect_(v.per_dialect_) {}
SQLValue::SQLValue(const CommonExpr& e, const tessel::DBTYPE& db)
    : value_(e.GetExpr(db)), db_type_(db) {}
SQLValue::SQLValue(const SQLExpr& e) : value_(e.ToExpr()) {}
SQLValue::SQLValue(const SQLFunc& f) : value_(f.text) {}
SQLValue::SQLValue(const SQLFunc& f, const tessel::DBTYPE& db) : value_(f.text), db_type_(db) {}

std::string SQLValue::GetExpr(const tessel::DBTYPE& db_type) const {
  return per_dialect_ ? per_dialect_->GetExpr(db_type) : value_;
}

void SQLValue::set_table_name(const std::string& /*table_name*/) {}

// A host's subclass may render otherwise: only the class itself answers.
const std::string* SQLValue::fixed_text() const {
  return typeid(*this) == typeid(SQLValue) && !per_dialect_ ? &value_ : nullptr;
}

}  // namespace vexel
