#include "vexel/ArrayExpr.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

#include "expressions/ListText.h"
#include "vexel/SQLValue.h"

namespace vexel {

ColAnyColExpr::ColAnyColExpr(const std::string& table_name, const std::string& value_text,
                             const std::string& column_name)
    : table_name_(table_name), value_text_(value_text), column_name_(column_name) {}

std::string ColAnyColExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  switch (db_type) {
    case tessel::DB_SQLITE:
      // The scalar subquery yields the first element of the table's first
      // row only; hosts match this exact text.
      return "( SELECT value FROM " + table_name_ + ",json_each(" + column_name_ + ")) in (" +
             value_text_ + ")";
    case tessel::DB_POSTGRESQL:
    case tessel::DB_SQLSERVER:
    default:
      return value_text_ + "=ANY(" + column_name_ + ")";
  }
}

void ColAnyColExpr::set_table_name(const std::string& /*table_name*/) {}

// Defined beside the node it builds.
ColAnyColExpr SQLValue::operator==(const ANY& any) const {
  return ColAnyColExpr(any.table_name(), GetValue(), any.column_name());
}

sub_array_col::sub_array_col(const std::string& column, const int& index)
    : column_(column), index_(index) {}

std::string sub_array_col::GetExpr(const tessel::DBTYPE& db_type) const {
  switch (db_type) {
    case tessel::DB_SQLITE:
      // Hosts match this text; SQLite itself rejects the unquoted path.
      return column_ + "->>$." + std::to_string(index_);
    case tessel::DB_POSTGRESQL:
    case tessel::DB_SQLSERVER:
    default:
      return column_ + "[" + std::to_string(index_) + "]";
  }
}

void sub_array_col::set_table_name(const std::string& /*table_name*/) {}

ArrayValue::ArrayValue(const std::vector<int>& values)
    : int_values_(values), int_list_(internal::int_list(values, ",")) {}

ArrayValue::ArrayValue(const std::vector<std::string>& values)
    : string_values_(values), string_list_(internal::quoted_list(values, ",", '"')) {}

std::string ArrayValue::GetExpr(const tessel::DBTYPE& db_type) const {
  const bool sqlite = db_type == tessel::DB_SQLITE;
  std::string text;
  if (!int_values_.empty()) {
    text = sqlite ? "json_array(" + int_list_ + ")" : "ARRAY[" + int_list_ + "]::INTEGER[]";
  }
  // A string list, when there is one, takes precedence.
  if (!string_values_.empty()) {
    text = sqlite ? "json_array(" + string_list_ + ")" : "ARRAY[" + string_list_ + "]::VARCHAR[]";
  }
  return text;
}

void ArrayValue::set_table_name(const std::string& /*table_name*/) {}

string_to_array::string_to_array(const array_type& type, const std::string& text, char separator)
    : type_(type), text_(text), separator_(separator) {}

namespace {

// Splits at every separator; an empty text has no pieces.
std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  size_t begin = 0;
  for (;;) {
    const size_t end = text.find(separator, begin);
    pieces.push_back(
        text.substr(begin, end == std::string::npos ? std::string::npos : end - begin));
    if (end == std::string::npos) break;
    begin = end + 1;
  }
  return pieces;
}

// The piece's leading decimal integer; false when it has none or it does
// not fit an int.
bool read_int(const std::string& piece, int& value) {
  const char* begin = piece.c_str();
  char* end = nullptr;
  errno = 0;
  const long parsed = std::strtol(begin, &end, 10);
  if (end == begin || errno == ERANGE || parsed < INT_MIN || parsed > INT_MAX) return false;
  value = static_cast<int>(parsed);
  return true;
}

}  // namespace

std::string string_to_array::sqlite_array() const {
  const std::vector<std::string> pieces = split(text_, separator_);
  if (type_ == ArrayOfInteger) {
    std::vector<int> numbers;
    int value = 0;
    for (const std::string& piece : pieces) {
      if (read_int(piece, value)) numbers.push_back(value);
    }
    return "json_array(" + internal::int_list(numbers, ",") + ")";
  }
  return "json_array(" + internal::quoted_list(pieces, ",", '"') + ")";
}

std::string string_to_array::GetExpr(const tessel::DBTYPE& db_type) const {
  if (type_ != ArrayOfInteger && type_ != ArrayOfString) return std::string();
  if (db_type == tessel::DB_SQLITE) return sqlite_array();
  const std::string separator(1, separator_);
  // The string form has a blank after the parenthesis and the integer form
  // has none; callers match both texts.
  if (type_ == ArrayOfInteger) {
    return "string_to_array('" + text_ + "','" + separator + "')::INTEGER[]";
  }
  return "string_to_array( '" + text_ + "','" + separator + "')::VARCHAR[]";
}

void string_to_array::set_table_name(const std::string& /*table_name*/) {}

}  // namespace vexel
