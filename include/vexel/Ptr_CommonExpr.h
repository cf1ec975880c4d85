/// \file
/// The condition value that every predicate returns. It holds shared node
/// pointers (never deep copies) and combines conditions:
///   AND / OR      new holder "(this AND other)", operands unchanged;
///   AndCon / &&   append " AND " other to this holder (flat, no grouping);
///   OrCon / |     the same with " OR ".
#ifndef VEXEL_PTR_COMMONEXPR_H
#define VEXEL_PTR_COMMONEXPR_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vexel/CommonExpr.h"

namespace vexel {

/// A condition: what every predicate of col returns, and what WHERE, ON,
/// HAVING, AND and OR take.
///
/// \code
/// vexel::tab t("t");
/// auto c = (t.col("a") == 1).OR(t.col("b") == 2).AND(t.col("c") == 3);
/// // c.GetExpr(db) == "((t.a = 1 OR t.b = 2) AND t.c = 3)"
/// \endcode
/// AND and OR on conditions bracket; the builders' AND and OR calls do not
/// (see QueryBuilder::AND). A default-made condition renders empty.
class VEXEL_API Ptr_CommonExpr : public CommonExpr {
 public:
  /// One operator text and the node it joins.
  using Operand = std::pair<std::string, std::shared_ptr<CommonExpr>>;

  Ptr_CommonExpr() = default;
  /// A condition holding node `p`.
  Ptr_CommonExpr(std::shared_ptr<CommonExpr> p);
  ///@{
  /// Conditions are plain values sharing their nodes.
  Ptr_CommonExpr(const Ptr_CommonExpr&) = default;
  Ptr_CommonExpr(Ptr_CommonExpr&&) = default;
  Ptr_CommonExpr& operator=(const Ptr_CommonExpr&) = default;
  Ptr_CommonExpr& operator=(Ptr_CommonExpr&&) = default;
  ///@}
  /// Releases nested nodes one by one, so that a chain nested however deep
  /// (a loop of `w = w.AND(x)`) is destroyed without deep recursion.
  ~Ptr_CommonExpr() override;

  /// A new node holding copies of this holder's four fields; never null.
  std::shared_ptr<CommonExpr> get_ptr() const;

  ///@{
  /// A new condition "(this AND other)" / "(this OR other)"; both operands stay
  /// as they were: `(a == 1).AND(b == 2)` renders "(t.a = 1 AND t.b = 2)".
  Ptr_CommonExpr AND(const Ptr_CommonExpr& other) const;
  Ptr_CommonExpr OR(const Ptr_CommonExpr& other) const;
  ///@}
  ///@{
  /// Appends " AND other" / " OR other" to this condition in place (&& and |
  /// are the same); the joined list renders in one pair of brackets, without
  /// grouping inside: `(a == 1) && (b == 2)` renders "(t.a = 1 AND t.b = 2)".
  Ptr_CommonExpr& AndCon(const Ptr_CommonExpr& other);
  Ptr_CommonExpr& OrCon(const Ptr_CommonExpr& other);
  Ptr_CommonExpr& operator&&(const Ptr_CommonExpr& other);
  Ptr_CommonExpr& operator|(const Ptr_CommonExpr& other);
  ///@}

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 protected:
  ///@{
  /// For derived conditions: set the parts of the holder.
  void SetLeft(std::shared_ptr<CommonExpr> p);
  void SetRight(std::shared_ptr<CommonExpr> p);
  void SetOperate(const std::string& op);
  void SetOperateV(const std::vector<Operand>& operates);
  ///@}

  bool expand(std::vector<Piece>& out) const override;
  void release_children(std::vector<std::shared_ptr<CommonExpr>>& out) override;
  const std::string* fixed_text() const override;

 private:
  friend class internal::ExprTree;

  Ptr_CommonExpr combine(const Ptr_CommonExpr& other, const char* op) const;

  /// A finished condition kept in the holder itself instead of in a node of
  /// its own; it stands where the first operand would.
  std::string text_;
  bool has_text_ = false;
  std::shared_ptr<CommonExpr> left_;
  std::vector<Operand> operates_;
  std::shared_ptr<CommonExpr> right_;
  std::string operate_;
};

}  // namespace vexel

#endif  // VEXEL_PTR_COMMONEXPR_H
