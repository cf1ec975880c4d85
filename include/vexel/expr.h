/// \file
/// A text-only condition kept beside the node tree: "a=1" | "b=2" gives
/// "(a=1 OR b=2)".
#ifndef VEXEL_EXPR_H
#define VEXEL_EXPR_H

#include <string>

#include "vexel/export.h"

namespace vexel {

class VEXEL_API expr {
 public:
  expr() = default;
  expr(const std::string& text);
  expr(const expr&) = default;
  expr& operator=(const expr&) = default;

  expr& operator|(const expr& other);
  expr& operator&&(const expr& other);

  std::string GetExpr() const;
  const std::string& GetValue() const { return text_; }

 protected:
  bool GetCompound() const { return compound_; }

 private:
  std::string text_;
  bool compound_ = false;
};

}  // namespace vexel

#endif  // VEXEL_EXPR_H
