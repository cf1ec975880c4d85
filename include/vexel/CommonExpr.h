/// \file
/// The expression-node interface. Every condition and computed value is a
/// tree of nodes that render themselves for a dialect when a statement is
/// rendered. Nodes are shared through std::shared_ptr; the destructor is
/// virtual (declared after the two operations, which keep their slots) so
/// that a node is destroyed whole however it is held.
///
/// Nodes that hold other nodes (a condition holder, CASE) also describe
/// their text as a list of pieces and hand over their children on
/// destruction, so that a tree of any depth renders and is destroyed on an
/// explicit stack instead of by recursion. Leaves keep the defaults.
#ifndef VEXEL_COMMONEXPR_H
#define VEXEL_COMMONEXPR_H

#include <memory>
#include <string>
#include <vector>

#include "tessel/DBType.h"
#include "vexel/export.h"

namespace vexel {

namespace internal {
class ExprTree;
}  // namespace internal

/// An expression node: anything that renders itself per dialect (values,
/// conditions, CASE, time and array expressions). Clauses take nodes by
/// reference and render them at once with the builder's dialect; conditions
/// are held as Ptr_CommonExpr, which shares nodes through std::shared_ptr.
/// A host may derive its own node: GetExpr returns the text for a dialect.
class VEXEL_API CommonExpr {
 public:
  /// The node's text in the given dialect.
  virtual std::string GetExpr(const tessel::DBTYPE& db_type) const = 0;
  /// Re-qualifies the node's columns; most nodes ignore it.
  virtual void set_table_name(const std::string& table_name) = 0;
  virtual ~CommonExpr() = default;

 protected:
  CommonExpr() = default;
  ///@{
  /// Nodes are copied by derived classes only.
  CommonExpr(const CommonExpr&) = default;
  CommonExpr(CommonExpr&&) = default;
  CommonExpr& operator=(const CommonExpr&) = default;
  CommonExpr& operator=(CommonExpr&&) = default;
  ///@}

  /// One step of a node's text: either a literal `text` or a child `node`.
  struct Piece {
    /// A literal text, or null.
    const std::string* text;
    /// A child node, or null.
    const CommonExpr* node;
  };
  /// Appends this node's text as pieces, in order, and answers true; a leaf
  /// answers false and renders through GetExpr. The pieces point into this
  /// node (or at static texts) and stay valid while the node is unchanged.
  virtual bool expand(std::vector<Piece>& /*out*/) const { return false; }
  /// Moves every child pointer this node holds into `out`.
  virtual void release_children(std::vector<std::shared_ptr<CommonExpr>>& /*out*/) {}
  /// The node's text when it is the same in every dialect and kept whole in
  /// the node, so that a statement can append it without a copy; null
  /// otherwise (the default).
  virtual const std::string* fixed_text() const { return nullptr; }

  friend class internal::ExprTree;
};

}  // namespace vexel

#endif  // VEXEL_COMMONEXPR_H
