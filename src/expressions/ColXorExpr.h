// Bitwise exclusive or of a column and a value, per dialect.
#ifndef VEXEL_EXPRESSIONS_COLXOREXPR_H
#define VEXEL_EXPRESSIONS_COLXOREXPR_H

#include <string>

#include "vexel/CommonExpr.h"

namespace vexel {

class ColXorExpr final : public CommonExpr {
 public:
  ColXorExpr(std::string col_text, std::string value_text);
  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string col_text_;
  std::string value_text_;
};

}  // namespace vexel

#endif  // VEXEL_EXPRESSIONS_COLXOREXPR_H
