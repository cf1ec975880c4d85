// The expression-node interface. Every condition and computed value is a
// tree of nodes that render themselves for a dialect when a statement is
// rendered. Nodes are always owned through std::shared_ptr, which destroys
// the concrete type; the destructor is protected so that no one deletes a
// node through this interface.
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

 protected:
  CommonExpr() = default;
  CommonExpr(const CommonExpr&) = default;
  CommonExpr(CommonExpr&&) = default;
  CommonExpr& operator=(const CommonExpr&) = default;
  CommonExpr& operator=(CommonExpr&&) = default;
  ~CommonExpr() = default;
};

}  // namespace vexel

#endif  // VEXEL_COMMONEXPR_H
