#include "vexel/expr.h"

namespace vexel {

expr::expr(const std::string& text) : text_(text) {}

expr& expr::operator|(const expr& other) {
  compound_ = true;
  text_ += " OR " + other.GetExpr();
  return *this;
}

expr& expr::operator&&(const expr& other) {
  compound_ = true;
  text_ += " AND " + other.GetExpr();
  return *this;
}

std::string expr::GetExpr() const {
  if (compound_ && !text_.empty()) return "(" + text_ + ")";
  return text_;
}

}  // namespace vexel
