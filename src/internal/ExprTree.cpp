#include "internal/ExprTree.h"

#include <algorithm>
#include <memory>
#include <typeinfo>
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
  append(out, root, db_type);
  return out;
}

void ExprTree::append(std::string& out, const CommonExpr& root, tessel::DBTYPE db_type) {
  if (const std::string* text = root.fixed_text()) {
    out += *text;
    return;
  }
  // A stack of its own per render: one kept per thread between renders
  // would need a destructor at thread exit, and MinGW's runtime may run that
  // after the thread's storage is gone.
  std::vector<CommonExpr::Piece> pending;
  pending.reserve(16);
  // Pieces still to write, the next one last.
  pending.push_back({nullptr, &root});
  while (!pending.empty()) {
    const CommonExpr::Piece piece = pending.back();
    pending.pop_back();
    if (piece.text != nullptr) {
      out += *piece.text;
      continue;
    }
    if (piece.node == nullptr) continue;
    if (const std::string* text = piece.node->fixed_text()) {
      out += *text;
      continue;
    }
    const std::size_t mark = pending.size();
    if (piece.node->expand(pending)) {
      std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(mark), pending.end());
    } else {
      out += piece.node->GetExpr(db_type);
    }
  }
}

Ptr_CommonExpr ExprTree::finished(std::string text) {
  Ptr_CommonExpr holder;
  finished_text(holder) = std::move(text);
  return holder;
}

std::string& ExprTree::finished_text(Ptr_CommonExpr& holder) {
  holder.has_text_ = true;
  return holder.text_;
}

bool ExprTree::take(Ptr_CommonExpr& holder, std::string& out) {
  if (typeid(holder) != typeid(Ptr_CommonExpr) || holder.fixed_text() == nullptr) return false;
  out = std::move(holder.text_);
  holder.text_.clear();
  return true;
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
