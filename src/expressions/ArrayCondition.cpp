#include "expressions/ArrayCondition.h"

#include "expressions/ListText.h"

namespace vexel {
namespace {

// SQLite reads the array's elements from its JSON text. The subquery names
// the table again instead of the current row, so on a table of several rows
// the condition holds for every row or for none; hosts match the text, so it
// stays as it is.
std::string json_elements(const std::string& table, const std::string& column,
                          const char* distinct) {
  return std::string("SELECT ") + distinct + "value from " + table + ",json_each(" + column + ")";
}

const char* array_cast(array_type type) {
  return type == ArrayOfInteger ? "]::INTEGER[]" : "]::VARCHAR[]";
}

}  // namespace

ColContainsExpr::ColContainsExpr(const array_col& c, const std::vector<int>& values)
    : table_name_(c.only_table_name()),
      type_(ArrayOfInteger),
      column_name_(c.only_col_name()),
      values_(internal::int_list(values, ",")),
      count_(std::to_string(values.size())) {}

ColContainsExpr::ColContainsExpr(const array_col& c, const std::vector<std::string>& values)
    : table_name_(c.only_table_name()),
      type_(ArrayOfString),
      column_name_(c.only_col_name()),
      values_(internal::quoted_list(values, ",", '\'')),
      count_(std::to_string(values.size())) {}

std::string ColContainsExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  switch (db_type) {
    case tessel::DB_SQLITE:
      // Counts the array's distinct elements found in the list; a list with
      // a repeated value therefore never matches.
      return "EXISTS (SELECT 1 WHERE( SELECT SUM(CASE WHEN value in (" + values_ +
             ") THEN 1 ELSE 0 END)=" + count_ + " FROM (" +
             json_elements(table_name_, column_name_, "distinct ") + ") as value))";
    case tessel::DB_POSTGRESQL:
    case tessel::DB_SQLSERVER:
    default:
      return column_name_ + " @> ARRAY[" + values_ + array_cast(type_);
  }
}

void ColContainsExpr::set_table_name(const std::string& /*table_name*/) {}

// The parenthesised string list is joined by ", " while the bracketed one
// uses ","; both texts are matched by callers.
ColInterSecExpr::ColInterSecExpr(const array_col& c, const std::vector<int>& values)
    : table_name_(c.only_table_name()),
      column_name_(c.only_col_name()),
      values_(internal::int_list(values, ",")),
      parenthesised_("(" + values_ + ")"),
      type_(ArrayOfInteger) {}

ColInterSecExpr::ColInterSecExpr(const array_col& c, const std::vector<std::string>& values)
    : table_name_(c.only_table_name()),
      column_name_(c.only_col_name()),
      values_(internal::quoted_list(values, ",", '\'')),
      parenthesised_("(" + internal::quoted_list(values, ", ", '\'') + ")"),
      type_(ArrayOfString) {}

std::string ColInterSecExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  switch (db_type) {
    case tessel::DB_SQLITE:
      // No blank between "in" and the list; callers match this exact text.
      return "EXISTS (SELECT value FROM (" + json_elements(table_name_, column_name_, "") +
             ") as value WHERE value in" + parenthesised_ + ")";
    case tessel::DB_POSTGRESQL:
      return column_name_ + " && ARRAY[" + values_ + array_cast(type_);
    case tessel::DB_SQLSERVER:
    default:
      // Integers go without a cast outside PostgreSQL; hosts depend on it.
      if (type_ == ArrayOfInteger) return column_name_ + " && ARRAY[" + values_ + "]";
      return column_name_ + " && ARRAY[" + values_ + array_cast(type_);
  }
}

void ColInterSecExpr::set_table_name(const std::string& /*table_name*/) {}

}  // namespace vexel
