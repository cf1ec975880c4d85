#include "vexel/Ptr_CommonExpr.h"

namespace vexel {
namespace {

constexpr const char* kAnd = " AND ";
constexpr const char* kOr = " OR ";

}  // namespace

Ptr_CommonExpr::Ptr_CommonExpr(std::shared_ptr<CommonExpr> p) : left_(std::move(p)) {}

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
  return *this;
}

Ptr_CommonExpr& Ptr_CommonExpr::OrCon(const Ptr_CommonExpr& other) {
  operates_.emplace_back(kOr, other.get_ptr());
  return *this;
}

Ptr_CommonExpr& Ptr_CommonExpr::operator&&(const Ptr_CommonExpr& other) { return AndCon(other); }
Ptr_CommonExpr& Ptr_CommonExpr::operator|(const Ptr_CommonExpr& other) { return OrCon(other); }

std::string Ptr_CommonExpr::GetExpr(const tessel::DBTYPE& db_type) const {
  std::string text;
  // Appended pairs follow `left` only: a holder without a first operand
  // renders "()" once pairs were added, and hosts start chains from a real
  // condition because of it.
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

void Ptr_CommonExpr::set_table_name(const std::string& table_name) {
  if (left_) left_->set_table_name(table_name);
}

void Ptr_CommonExpr::SetLeft(std::shared_ptr<CommonExpr> p) {
  if (p) left_ = std::move(p);
}

void Ptr_CommonExpr::SetRight(std::shared_ptr<CommonExpr> p) {
  if (p) right_ = std::move(p);
}

void Ptr_CommonExpr::SetOperate(const std::string& op) { operate_ = op; }

void Ptr_CommonExpr::SetOperateV(const std::vector<Operand>& operates) { operates_ = operates; }

}  // namespace vexel
