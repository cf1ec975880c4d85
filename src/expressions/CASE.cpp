#include "vexel/CASE.h"

#include "internal/ExprTree.h"

namespace vexel {
namespace {

std::shared_ptr<CommonExpr> node_of(const Ptr_CommonExpr& p) { return p.get_ptr(); }
std::shared_ptr<CommonExpr> node_of(const SQLExpr& e) { return std::make_shared<SQLExpr>(e); }
std::shared_ptr<CommonExpr> node_of(const SQLValue& v) { return std::make_shared<SQLValue>(v); }
std::shared_ptr<CommonExpr> node_of(const col& c) {
  return std::make_shared<SQLExpr>(c.col_name());
}

}  // namespace

CASE::CASE(const SQLExpr& operand) { set_operand(node_of(operand)); }

CASE::~CASE() { internal::ExprTree::dismantle(*this); }

CASE& CASE::when(Node condition) {
  pending_when_ = std::move(condition);
  has_when_ = true;
  return *this;
}

CASE& CASE::set_operand(Node operand) {
  operand_ = std::move(operand);
  has_operand_ = true;
  return *this;
}

// The pending condition stays, so a second THEN repeats it.
CASE& CASE::then(Node result) {
  if (has_when_) branches_.emplace_back(pending_when_, std::move(result));
  return *this;
}

CASE& CASE::otherwise(Node result) {
  else_expr_ = std::move(result);
  has_else_ = true;
  return *this;
}

CASE& CASE::WHEN(const Ptr_CommonExpr& condition) { return when(node_of(condition)); }
CASE& CASE::WHEN(const SQLExpr& condition) { return when(node_of(condition)); }
CASE& CASE::WHEN(std::shared_ptr<CommonExpr> condition) { return when(std::move(condition)); }
CASE& CASE::WHEN(const SQLValue& operand) { return set_operand(node_of(operand)); }
CASE& CASE::WHEN(const col& operand) { return set_operand(node_of(operand)); }

CASE& CASE::THEN(const Ptr_CommonExpr& result) { return then(node_of(result)); }
CASE& CASE::THEN(const SQLExpr& result) { return then(node_of(result)); }
CASE& CASE::THEN(const SQLValue& result) { return then(node_of(result)); }
CASE& CASE::THEN(const col& result) { return then(node_of(result)); }
CASE& CASE::THEN(std::shared_ptr<CommonExpr> result) { return then(std::move(result)); }

CASE& CASE::ELSE(const Ptr_CommonExpr& result) { return otherwise(node_of(result)); }
CASE& CASE::ELSE(const SQLExpr& result) { return otherwise(node_of(result)); }
CASE& CASE::ELSE(const SQLValue& result) { return otherwise(node_of(result)); }
CASE& CASE::ELSE(const col& result) { return otherwise(node_of(result)); }
CASE& CASE::ELSE(std::shared_ptr<CommonExpr> result) { return otherwise(std::move(result)); }

std::string CASE::GetExpr(const tessel::DBTYPE& db_type) const {
  return internal::ExprTree::render(*this, db_type);
}

// The same text in every dialect; the dialect only reaches the parts.
// Without an operand "CASE " meets " WHEN " and the text reads
// "CASE  WHEN ..." with two blanks: hosts match it, keep it.
bool CASE::expand(std::vector<Piece>& out) const {
  static const std::string kCase = "CASE ";
  static const std::string kWhen = " WHEN ";
  static const std::string kThen = " THEN ";
  static const std::string kElse = " ELSE ";
  static const std::string kEnd = " END";
  out.push_back({&kCase, nullptr});
  if (has_operand_) out.push_back({nullptr, operand_.get()});
  for (const auto& branch : branches_) {
    out.push_back({&kWhen, nullptr});
    out.push_back({nullptr, branch.first.get()});
    out.push_back({&kThen, nullptr});
    out.push_back({nullptr, branch.second.get()});
  }
  if (has_else_) {
    out.push_back({&kElse, nullptr});
    out.push_back({nullptr, else_expr_.get()});
  }
  out.push_back({&kEnd, nullptr});
  return true;
}

void CASE::release_children(std::vector<std::shared_ptr<CommonExpr>>& out) {
  for (Node* node : {&operand_, &pending_when_, &else_expr_})
    internal::ExprTree::hand_over(*node, out);
  for (auto& branch : branches_) {
    internal::ExprTree::hand_over(branch.first, out);
    internal::ExprTree::hand_over(branch.second, out);
  }
  branches_.clear();
}

void CASE::set_table_name(const std::string& /*table_name*/) {}

}  // namespace vexel
