// Rendering and destruction of expression trees without recursion. A
// condition built in a loop (`w = w.AND(x)`) or a generated CASE nests once
// per turn, so a tree may be a million levels deep; walking it recursively
// would run out of stack long before that, on small thread stacks much
// sooner.
#ifndef VEXEL_INTERNAL_EXPRTREE_H
#define VEXEL_INTERNAL_EXPRTREE_H

#include <memory>
#include <string>
#include <vector>

#include "vexel/CommonExpr.h"
#include "vexel/Ptr_CommonExpr.h"

namespace vexel {
namespace internal {

class ExprTree {
 public:
  // The text of `root`: nodes that hold others are expanded on an explicit
  // stack, leaves render through their own GetExpr.
  static std::string render(const CommonExpr& root, tessel::DBTYPE db_type);
  // The same text appended to `out`, which statements render into.
  static void append(std::string& out, const CommonExpr& root, tessel::DBTYPE db_type);

  // The text `root` keeps whole, the same in every dialect; null when it
  // renders otherwise.
  static const std::string* fixed(const CommonExpr& root) { return root.fixed_text(); }
  // A condition whose text is finished: kept in the holder, no node.
  static Ptr_CommonExpr finished(std::string text);
  // Marks `holder` finished and gives its text to be written in place.
  static std::string& finished_text(Ptr_CommonExpr& holder);
  // Moves the finished text of `holder` into `out`; false, and nothing
  // moved, when it has none or is a subclass that may render otherwise.
  static bool take(Ptr_CommonExpr& holder, std::string& out);

  // Called from the destructor of a node that holds others: takes its
  // children and destroys them in a loop. A node destroyed inside that loop
  // hands its own children to the loop instead of destroying them itself,
  // so the depth of the tree never becomes depth of the call stack.
  static void dismantle(CommonExpr& node) noexcept;

  // For release_children: moves `child` into `out` when this is its last
  // owner; a child shared elsewhere is only let go of here.
  static void hand_over(std::shared_ptr<CommonExpr>& child,
                        std::vector<std::shared_ptr<CommonExpr>>& out);
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_EXPRTREE_H
