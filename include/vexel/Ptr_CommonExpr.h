// The condition value that every predicate returns. It holds shared node
// pointers (never deep copies) and combines conditions:
//   AND / OR      new holder "(this AND other)", operands unchanged;
//   AndCon / &&   append " AND " other to this holder (flat, no grouping);
//   OrCon / |     the same with " OR ".
#ifndef VEXEL_PTR_COMMONEXPR_H
#define VEXEL_PTR_COMMONEXPR_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vexel/CommonExpr.h"

namespace vexel {

class VEXEL_API Ptr_CommonExpr : public CommonExpr {
 public:
  using Operand = std::pair<std::string, std::shared_ptr<CommonExpr>>;

  Ptr_CommonExpr() = default;
  Ptr_CommonExpr(std::shared_ptr<CommonExpr> p);
  Ptr_CommonExpr(const Ptr_CommonExpr&) = default;
  Ptr_CommonExpr(Ptr_CommonExpr&&) = default;
  Ptr_CommonExpr& operator=(const Ptr_CommonExpr&) = default;
  Ptr_CommonExpr& operator=(Ptr_CommonExpr&&) = default;
  // Releases nested holders one by one, so that a chain nested however deep
  // (a loop of `w = w.AND(x)`) is destroyed without deep recursion.
  ~Ptr_CommonExpr() override;

  // A new node holding copies of this holder's four fields; never null.
  std::shared_ptr<CommonExpr> get_ptr() const;

  Ptr_CommonExpr AND(const Ptr_CommonExpr& other) const;
  Ptr_CommonExpr OR(const Ptr_CommonExpr& other) const;
  Ptr_CommonExpr& AndCon(const Ptr_CommonExpr& other);
  Ptr_CommonExpr& OrCon(const Ptr_CommonExpr& other);
  Ptr_CommonExpr& operator&&(const Ptr_CommonExpr& other);
  Ptr_CommonExpr& operator|(const Ptr_CommonExpr& other);

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  // How many holders are nested here, this one included.
  size_t depth() const { return depth_; }
  void set_table_name(const std::string& table_name) override;

 protected:
  void SetLeft(std::shared_ptr<CommonExpr> p);
  void SetRight(std::shared_ptr<CommonExpr> p);
  void SetOperate(const std::string& op);
  void SetOperateV(const std::vector<Operand>& operates);

 private:
  Ptr_CommonExpr combine(const Ptr_CommonExpr& other, const char* op) const;
  std::string render_deep(const tessel::DBTYPE& db_type) const;
  // Moves this holder's node pointers into `out`.
  void release_into(std::vector<std::shared_ptr<CommonExpr>>& out);

  std::shared_ptr<CommonExpr> left_;
  std::vector<Operand> operates_;
  std::shared_ptr<CommonExpr> right_;
  std::string operate_;
  size_t depth_ = 1;
};

}  // namespace vexel

#endif  // VEXEL_PTR_COMMONEXPR_H
