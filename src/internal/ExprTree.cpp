#include "internal/ExprTree.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace vexel {
namespace internal {
namespace {

// The dismantling loop running on this thread, if any.
thread_local std::vector<std::shared_ptr<CommonExpr>>* running_dismantle = nullptr;

}  // namespace

std::string ExprTree::render(const CommonExpr& root, tessel::DBTYPE db_type) {
  std::string out;
  // Pieces still to write, the next one last.
  std::vector<CommonExpr::Piece> pending{{nullptr, &root}};
  while (!pending.empty()) {
    const CommonExpr::Piece piece = pending.back();
    pending.pop_back();
    if (piece.text != nullptr) {
      out += *piece.text;
      continue;
    }
    if (piece.node == nullptr) continue;
    const std::size_t mark = pending.size();
    if (piece.node->expand(pending)) {
      std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(mark), pending.end());
    } else {
      out += piece.node->GetExpr(db_type);
    }
  }
  return out;
}

void ExprTree::dismantle(CommonExpr& node) noexcept {
  if (running_dismantle != nullptr) {
    node.release_children(*running_dismantle);
    return;
  }
  std::vector<std::shared_ptr<CommonExpr>> pending;
  running_dismantle = &pending;
  node.release_children(pending);
  while (!pending.empty()) {
    // Taken out of `pending` first: destroying it (at the end of the turn)
    // may append its own children to `pending`.
    std::shared_ptr<CommonExpr> next = std::move(pending.back());
    pending.pop_back();
  }
  running_dismantle = nullptr;
}

void ExprTree::hand_over(std::shared_ptr<CommonExpr>& child,
                         std::vector<std::shared_ptr<CommonExpr>>& out) {
  if (child.use_count() == 1) {
    out.push_back(std::move(child));
  } else {
    child.reset();
  }
}

}  // namespace internal
}  // namespace vexel
