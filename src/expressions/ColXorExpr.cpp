#include "expressions/ColXorExpr.h"

#include <utility>

namespace vexel {

ColXorExpr::ColXorExpr(std::string col_text, std::string value_text)
    : col_text_(std::move(col_text)), value_text_(std::move(value_text)) {}

std::string ColXorExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  const std::string& c = col_text_;
  const std::string& x = value_text_;
  switch (db_type) {
    case tessel::DB_SQLITE:
      // SQLite has no XOR operator: (c & ~x) | (x & ~c), spelled as hosts
      // expect it.
      return "(" + c + " & ~(" + x + "))|(" + x + " & ~" + c + ")";
    case tessel::DB_POSTGRESQL:
      return c + " # " + x;
    case tessel::DB_SQLSERVER:
    default:
      // No blanks around "#" here; callers match this exact text.
      return c + "#" + x;
  }
}

void ColXorExpr::set_table_name(const std::string& /*table_name*/) {}

}  // namespace vexel
