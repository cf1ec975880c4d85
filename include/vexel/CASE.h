/// \file
/// A CASE expression built by chained calls:
///
/// \code
/// vexel::CASE().WHEN(c == 1).THEN(vexel::SQLValue("one"))
///              .ELSE(vexel::SQLValue("other")).END()
/// \endcode
///
/// Only the condition forms of WHEN (a condition, an SQLExpr or a node
/// pointer) open a branch; a value or a column given to WHEN becomes the
/// operand written after "CASE " instead, and a THEN with no condition pending
/// is dropped. A THEN after a THEN repeats the last condition.
#ifndef VEXEL_CASE_H
#define VEXEL_CASE_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vexel/CommonExpr.h"
#include "vexel/Ptr_CommonExpr.h"
#include "vexel/SQLExpr.h"
#include "vexel/SQLValue.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

/// A CASE expression:
/// `CASE().WHEN(c > SQLValue(5)).THEN(SQLValue("big")).ELSE(SQLValue("small"))`
/// renders "CASE  WHEN shop.items.qty > 5 THEN 'big' ELSE 'small' END".
class VEXEL_API CASE : public CommonExpr {
 public:
  CASE() = default;
  /// A simple CASE over `operand` ("CASE x WHEN ..."); the default has none.
  explicit CASE(const SQLExpr& operand);
  ///@{
  /// Plain value sharing its nodes.
  CASE(const CASE&) = default;
  CASE(CASE&&) = default;
  CASE& operator=(const CASE&) = default;
  CASE& operator=(CASE&&) = default;
  ///@}
  /// Releases nested nodes one by one: a CASE nested however deep is
  /// destroyed without deep recursion.
  ~CASE() override;

  ///@{
  /// Condition forms: the next THEN pairs with this condition.
  CASE& WHEN(const Ptr_CommonExpr& condition);
  CASE& WHEN(const SQLExpr& condition);
  CASE& WHEN(std::shared_ptr<CommonExpr> condition);
  ///@}
  ///@{
  /// Operand forms: replace the operand; no branch is opened.
  CASE& WHEN(const SQLValue& operand);
  CASE& WHEN(const col& operand);
  ///@}

  ///@{
  /// The result of the last WHEN.
  CASE& THEN(const Ptr_CommonExpr& result);
  CASE& THEN(const SQLExpr& result);
  CASE& THEN(const SQLValue& result);
  CASE& THEN(const col& result);
  CASE& THEN(std::shared_ptr<CommonExpr> result);
  ///@}

  ///@{
  /// A later ELSE replaces an earlier one.
  CASE& ELSE(const Ptr_CommonExpr& result);
  CASE& ELSE(const SQLExpr& result);
  CASE& ELSE(const SQLValue& result);
  CASE& ELSE(const col& result);
  CASE& ELSE(std::shared_ptr<CommonExpr> result);
  ///@}

  /// Ends the chain; rendering does not depend on it.
  CASE& END() { return *this; }

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 protected:
  bool expand(std::vector<Piece>& out) const override;
  void release_children(std::vector<std::shared_ptr<CommonExpr>>& out) override;

 private:
  using Node = std::shared_ptr<CommonExpr>;

  CASE& when(Node condition);
  CASE& set_operand(Node operand);
  CASE& then(Node result);
  CASE& otherwise(Node result);

  bool has_operand_ = false;
  bool has_when_ = false;
  bool has_else_ = false;
  Node operand_;
  Node pending_when_;
  Node else_expr_;
  std::vector<std::pair<Node, Node>> branches_;
};

}  // namespace vexel

#endif  // VEXEL_CASE_H
