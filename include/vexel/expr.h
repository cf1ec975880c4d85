/// \file
/// A text-only condition kept beside the node tree: "a=1" | "b=2" gives
/// "(a=1 OR b=2)".
#ifndef VEXEL_EXPR_H
#define VEXEL_EXPR_H

#include <string>

#include "vexel/export.h"

namespace vexel {

/// A raw condition text that combines with | (OR) and && (AND) into a
/// bracketed text: `(vexel::expr("a = 1") | vexel::expr("b = 2")).GetExpr()`
/// is "(a = 1 OR b = 2)".
class VEXEL_API expr {
 public:
  expr() = default;
  /// A text taken as it stands.
  expr(const std::string& text);
  ///@{
  /// Plain value.
  expr(const expr&) = default;
  expr& operator=(const expr&) = default;
  ///@}

  ///@{
  /// Joins `other` with " OR " (|) or " AND " (&&), in place.
  expr& operator|(const expr& other);
  expr& operator&&(const expr& other);
  ///@}

  /// The text, bracketed once it was combined.
  std::string GetExpr() const;
  /// The text as held.
  const std::string& GetValue() const { return text_; }

 protected:
  /// Whether the text was combined.
  bool GetCompound() const { return compound_; }

 private:
  std::string text_;
  /// Whether the text was combined.
  bool compound_ = false;
};

}  // namespace vexel

#endif  // VEXEL_EXPR_H
