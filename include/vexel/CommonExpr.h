// The expression-node interface. Every condition and computed value is a
// tree of nodes that render themselves for a dialect when a statement is
// rendered. Nodes are shared through std::shared_ptr; the destructor is
// virtual (declared after the two operations, which keep their slots) so
// that a node is destroyed whole however it is held.
#ifndef VEXEL_COMMONEXPR_H
#define VEXEL_COMMONEXPR_H

#include <string>

#include "tessel/DBType.h"
#include "vexel/export.h"

namespace vexel {

class VEXEL_API CommonExpr {
 public:
  // The node's text in the given dialect.
  virtual std::string GetExpr(const tessel::DBTYPE& db_type) const = 0;
  // Re-qualifies the node's columns; most nodes ignore it.
  virtual void set_table_name(const std::string& table_name) = 0;
  virtual ~CommonExpr() = default;

 protected:
  CommonExpr() = default;
  CommonExpr(const CommonExpr&) = default;
  CommonExpr(CommonExpr&&) = default;
  CommonExpr& operator=(const CommonExpr&) = default;
  CommonExpr& operator=(CommonExpr&&) = default;
};

}  // namespace vexel

#endif  // VEXEL_COMMONEXPR_H
