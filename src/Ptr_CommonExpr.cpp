#include "vexel/Ptr_CommonExpr.h"

#include <typeinfo>

#include "internal/ExprTree.h"

namespace vexel {
namespace {

constexpr const char* kAnd = " AND ";
constexpr const char* kOr = " OR ";

}  // namespace

Ptr_CommonExpr::Ptr_CommonExpr(std::shared_ptr<CommonExpr> p) : left_(std::move(p)) {}

Ptr_CommonExpr::~Ptr_CommonExpr() {
  if (left_ || right_ || !operates_.empty()) internal::ExprTree::dismantle(*this);
}

std::shared_ptr<CommonExpr> Ptr_CommonExpr::get_ptr() const {
  return std::make_shared<Ptr_CommonExpr>(*this);
}

Ptr_CommonExpr Ptr_CommonExpr::combine(const Ptr_CommonExpr& other, const char* op) const {
  std::shared_ptr<CommonExpr> p = other.get_ptr();
  if (!p) return *this;
  Ptr_CommonExpr result;
  if (fixed_text() != nullptr) {
    // A finished condition needs no node of its own to be grouped: the text
    // renders the same in the first operand's place.
    result.text_ = text_;
    result.has_text_ = true;
  } else {
    result.left_ = get_ptr();
  }
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
  return *this;
}

Ptr_CommonExpr& Ptr_CommonExpr::OrCon(const Ptr_CommonExpr& other) {
  operates_.emplace_back(kOr, other.get_ptr());
  return *this;
}

Ptr_CommonExpr& Ptr_CommonExpr::operator&&(const Ptr_CommonExpr& other) { return AndCon(other); }
Ptr_CommonExpr& Ptr_CommonExpr::operator|(const Ptr_CommonExpr& other) { return OrCon(other); }

std::string Ptr_CommonExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  return internal::ExprTree::render(*this, db_type);
}

// Appended pairs follow `left` only: a holder without a first operand renders
// "()" once pairs were added, and hosts start chains from a real condition
// because of it.
bool Ptr_CommonExpr::expand(std::vector<Piece>& out) const {
  static const std::string kOpen = "(";
  static const std::string kClose = ")";
  const bool grouped = !operates_.empty() || right_;
  if (grouped) out.push_back({&kOpen, nullptr});
  if (has_text_ || left_) {
    if (has_text_) {
      out.push_back({&text_, nullptr});
    } else {
      out.push_back({nullptr, left_.get()});
    }
    if (right_) {
      out.push_back({&operate_, nullptr});
      out.push_back({nullptr, right_.get()});
    }
    for (const Operand& pair : operates_) {
      out.push_back({&pair.first, nullptr});
      out.push_back({nullptr, pair.second.get()});
    }
  }
  if (grouped) out.push_back({&kClose, nullptr});
  return true;
}

const std::string* Ptr_CommonExpr::fixed_text() const {
  if (!has_text_ || right_ || !operates_.empty()) return nullptr;
  return &text_;
}

void Ptr_CommonExpr::release_children(std::vector<std::shared_ptr<CommonExpr>>& out) {
  internal::ExprTree::hand_over(left_, out);
  internal::ExprTree::hand_over(right_, out);
  for (Operand& pair : operates_) internal::ExprTree::hand_over(pair.second, out);
  operates_.clear();
}

// Only `left` is told, down a chain of plain holders followed in a loop;
// the first other node takes the name.
void Ptr_CommonExpr::set_table_name(const std::string& table_name) {
  CommonExpr* node = left_.get();
  while (node != nullptr && typeid(*node) == typeid(Ptr_CommonExpr)) {
    node = static_cast<Ptr_CommonExpr*>(node)->left_.get();
  }
  if (node != nullptr) node->set_table_name(table_name);
}

void Ptr_CommonExpr::SetLeft(std::shared_ptr<CommonExpr> p) {
  if (!p) return;
  left_ = std::move(p);
  has_text_ = false;
  text_.clear();
}

void Ptr_CommonExpr::SetRight(std::shared_ptr<CommonExpr> p) {
  if (p) right_ = std::move(p);
}

void Ptr_CommonExpr::SetOperate(const std::string& op) { operate_ = op; }

void Ptr_CommonExpr::SetOperateV(const std::vector<Operand>& operates) { operates_ = operates; }

}  // namespace vexel
