#include "vexel/GroupConcatExpr.h"

namespace vexel {

GroupConcatExpr::GroupConcatExpr(const col& c, char separator)
    : column_(c.col_name()), separator_(separator) {}

GroupConcatExpr& GroupConcatExpr::AS(const std::string& alias) {
  alias_ = alias;
  return *this;
}

GroupConcatExpr& GroupConcatExpr::AS(const char* alias) {
  return AS(std::string(alias != nullptr ? alias : ""));
}

std::string GroupConcatExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  const std::string sep(1, separator_);
  std::string text;
  switch (db_type) {
    case tessel::DB_SQLITE:
      text = "group_concat(" + column_ + ",'" + sep + "')";
      break;
    case tessel::DB_POSTGRESQL:
    case tessel::DB_SQLSERVER:
    default:
      text = "array_to_string(array_agg(" + column_ + "),'" + sep + "')";
      break;
  }
  if (!alias_.empty()) text += " AS " + alias_;
  return text;
}

void GroupConcatExpr::set_table_name(const std::string& /*table_name*/) {}

}  // namespace vexel
