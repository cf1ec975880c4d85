#include "vexel/Ptr_CommonExpr.h"

#include <algorithm>

namespace vexel {
namespace {

constexpr const char* kAnd = " AND ";
constexpr const char* kOr = " OR ";

// Trees nested deeper than this are rendered and destroyed with an explicit
// stack instead of recursion (a filter loop of `w = w.AND(x)` nests once per
// turn); shallower ones take the plain recursive path.
constexpr size_t kDeep = 256;

// Nesting depth of a node: a holder's own, 0 for any other node.
size_t depth_of(const std::shared_ptr<CommonExpr>& p) {
  const auto* holder = dynamic_cast<const Ptr_CommonExpr*>(p.get());
  return holder != nullptr ? holder->depth() : 0;
}

}  // namespace

Ptr_CommonExpr::Ptr_CommonExpr(std::shared_ptr<CommonExpr> p)
    : left_(std::move(p)), depth_(1 + depth_of(left_)) {}

std::shared_ptr<CommonExpr> Ptr_CommonExpr::get_ptr() const {
  return std::make_shared<Ptr_CommonExpr>(*this);
}

Ptr_CommonExpr Ptr_CommonExpr::combine(const Ptr_CommonExpr& other, const char* op) const {
  Ptr_CommonExpr result(*this);
  std::shared_ptr<CommonExpr> p = other.get_ptr();
  if (!p) return result;
  result = Ptr_CommonExpr(get_ptr());
  result.SetOperate(op);
  result.SetRight(std::move(p));
  return result;
}

Ptr_CommonExpr Ptr_CommonExpr::AND(const Ptr_CommonExpr& other) const {
  return combine(other, kAnd);
}
Ptr_CommonExpr Ptr_CommonExpr::OR(const Ptr_CommonExpr& other) const { return combine(other, kOr); }

Ptr_CommonExpr& Ptr_CommonExpr::AndCon(const Ptr_CommonExpr& other) {
  operates_.emplace_back(kAnd, other.get_ptr());
  depth_ = std::max(depth_, 1 + other.depth_);
  return *this;
}

Ptr_CommonExpr& Ptr_CommonExpr::OrCon(const Ptr_CommonExpr& other) {
  operates_.emplace_back(kOr, other.get_ptr());
  depth_ = std::max(depth_, 1 + other.depth_);
  return *this;
}

Ptr_CommonExpr& Ptr_CommonExpr::operator&&(const Ptr_CommonExpr& other) { return AndCon(other); }
Ptr_CommonExpr& Ptr_CommonExpr::operator|(const Ptr_CommonExpr& other) { return OrCon(other); }

// Appended pairs follow `left` only: a holder without a first operand renders
// "()" once pairs were added, and hosts start chains from a real condition
// because of it.
std::string Ptr_CommonExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  if (depth_ > kDeep) return render_deep(db_type);
  std::string text;
  if (left_) {
    text += left_->GetExpr(db_type);
    if (right_) {
      text += operate_;
      text += right_->GetExpr(db_type);
    }
    for (const Operand& pair : operates_) {
      text += pair.first;
      if (pair.second) text += pair.second->GetExpr(db_type);
    }
  }
  if (operates_.empty() && !right_) return text;
  return "(" + text + ")";
}

// The same text as GetExpr, with nested holders expanded on an explicit
// stack instead of by recursion.
std::string Ptr_CommonExpr::render_deep(const tessel::DBTYPE& db_type) const {
  static const std::string kOpen = "(";
  static const std::string kClose = ")";
  // Either a node still to render or a piece of text to append.
  struct Item {
    const CommonExpr* node;
    const std::string* text;
  };
  std::string out;
  std::vector<Item> pending{{this, nullptr}};
  while (!pending.empty()) {
    const Item item = pending.back();
    pending.pop_back();
    if (item.text != nullptr) {
      out += *item.text;
      continue;
    }
    const auto* holder = dynamic_cast<const Ptr_CommonExpr*>(item.node);
    if (holder == nullptr) {
      out += item.node->GetExpr(db_type);
      continue;
    }
    // Pushed in reverse order of appearance.
    const bool grouped = !holder->operates_.empty() || holder->right_;
    if (grouped) pending.push_back({nullptr, &kClose});
    if (holder->left_) {
      for (auto it = holder->operates_.rbegin(); it != holder->operates_.rend(); ++it) {
        if (it->second) pending.push_back({it->second.get(), nullptr});
        pending.push_back({nullptr, &it->first});
      }
      if (holder->right_) {
        pending.push_back({holder->right_.get(), nullptr});
        pending.push_back({nullptr, &holder->operate_});
      }
      pending.push_back({holder->left_.get(), nullptr});
    }
    if (grouped) pending.push_back({nullptr, &kOpen});
  }
  return out;
}

void Ptr_CommonExpr::release_into(std::vector<std::shared_ptr<CommonExpr>>& out) {
  if (left_) out.push_back(std::move(left_));
  if (right_) out.push_back(std::move(right_));
  for (Operand& pair : operates_) {
    if (pair.second) out.push_back(std::move(pair.second));
  }
  operates_.clear();
}

Ptr_CommonExpr::~Ptr_CommonExpr() {
  if (depth_ <= kDeep) return;
  std::vector<std::shared_ptr<CommonExpr>> pending;
  release_into(pending);
  while (!pending.empty()) {
    std::shared_ptr<CommonExpr> node = std::move(pending.back());
    pending.pop_back();
    // A holder this is the last owner of gives up its children first, so
    // that destroying it here recurses no further.
    if (node.use_count() == 1) {
      if (auto* holder = dynamic_cast<Ptr_CommonExpr*>(node.get())) holder->release_into(pending);
    }
  }
}

void Ptr_CommonExpr::set_table_name(const std::string& table_name) {
  if (left_) left_->set_table_name(table_name);
}

void Ptr_CommonExpr::SetLeft(std::shared_ptr<CommonExpr> p) {
  if (!p) return;
  depth_ = std::max(depth_, 1 + depth_of(p));
  left_ = std::move(p);
}

void Ptr_CommonExpr::SetRight(std::shared_ptr<CommonExpr> p) {
  if (!p) return;
  depth_ = std::max(depth_, 1 + depth_of(p));
  right_ = std::move(p);
}

void Ptr_CommonExpr::SetOperate(const std::string& op) { operate_ = op; }

void Ptr_CommonExpr::SetOperateV(const std::vector<Operand>& operates) {
  operates_ = operates;
  for (const Operand& pair : operates_) depth_ = std::max(depth_, 1 + depth_of(pair.second));
}

}  // namespace vexel
