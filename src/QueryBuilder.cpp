#include "vexel/QueryBuilder.h"

#include <utility>

#include "SQLQuery.h"
#include "internal/Facade.h"
#include "internal/Log.h"
#include "internal/Text.h"
#include "vexel/SQLExpr.h"
#include "vexel/SQLValue.h"

namespace vexel {

QueryBuilder::QueryBuilder(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  db_type_ = internal::dialect_or_log(db_conn_, VEXEL_SITE);
  place(ptr_builder_, db_type_, db_conn_);
}

// A copy is independent: its own implementation (with the clauses and the
// implementation's connection), no facade connection, view flag cleared.
QueryBuilder::QueryBuilder(const QueryBuilder& other) : db_type_(other.db_type_) {
  internal::copy_or_fresh(db_type_, ptr_builder_, other.ptr_builder_);
}

// Both facades then share one implementation: a clause added through one
// shows in the other. Ownership is shared, so either may be destroyed first.
QueryBuilder& QueryBuilder::operator=(const QueryBuilder& other) {
  if (this == &other) return *this;
  public_view_ = other.public_view_;
  ptr_builder_.share(other.ptr_builder_,
                     [&](const SQLQuery& b) { return copy_query(other.db_type_, b); });
  db_conn_ = other.db_conn_;
  db_type_ = other.db_type_;
  return *this;
}

QueryBuilder::~QueryBuilder() = default;

void QueryBuilder::Reset() {
  db_type_ = internal::dialect_or_log(db_conn_, VEXEL_SITE);
  place(ptr_builder_, db_type_, db_conn_);
  public_view_ = false;
}

bool QueryBuilder::get_public_view_status() const {
  if (VEXEL_IMPL() == nullptr) return false;
  return public_view_;
}

std::string QueryBuilder::tosql() const {
  const SQLQuery* q = VEXEL_IMPL();
  return q != nullptr ? q->tosql() : std::string();
}

std::string QueryBuilder::subquery(const QueryBuilder& sub, const std::string& alias) {
  if (!public_view_) public_view_ = sub.get_public_view_status();
  std::string text = "(" + sub.tosql() + ")";
  if (!alias.empty()) text += " AS " + alias;
  return text;
}

QueryBuilder& QueryBuilder::SELECT(const std::vector<col>& cols) {
  if (SQLQuery* q = VEXEL_IMPL()) q->SELECT(cols);
  return *this;
}

QueryBuilder& QueryBuilder::SELECT(std::initializer_list<col> cols) {
  if (SQLQuery* q = VEXEL_IMPL()) q->SELECT(cols);
  return *this;
}

QueryBuilder& QueryBuilder::SELECT(const CommonExpr& e) {
  if (SQLQuery* q = VEXEL_IMPL()) q->SELECT(e);
  return *this;
}

QueryBuilder& QueryBuilder::SELECT(const SQLValue& v) {
  if (SQLQuery* q = VEXEL_IMPL()) q->SELECT(SQLExpr(v, db_type_));
  return *this;
}

QueryBuilder& QueryBuilder::FROM(const tab& t) {
  if (SQLQuery* q = VEXEL_IMPL()) internal::assign_table(q->FROM(), t);
  return *this;
}

// Reading from a view in schema "public" routes Execute to the connection's
// view-aware operation; a later FROM never clears the mark.
QueryBuilder& QueryBuilder::FROM(const view& v) {
  if (SQLQuery* q = VEXEL_IMPL()) {
    q->FROM(internal::view_text(v, db_type_));
    if (v.schema_name() == "public") public_view_ = true;
  }
  return *this;
}

QueryBuilder& QueryBuilder::FROM(const QueryBuilder& sub, const std::string& alias) {
  if (SQLQuery* q = VEXEL_IMPL())
    q->FROM(internal::table_text(tab(subquery(sub, alias)), db_type_));
  return *this;
}

QueryBuilder& QueryBuilder::JOIN(const tab& t) {
  if (SQLQuery* q = VEXEL_IMPL()) q->join_table(" JOIN ", t);
  return *this;
}

QueryBuilder& QueryBuilder::JOIN(const view& v) {
  if (SQLQuery* q = VEXEL_IMPL()) q->JOIN(" JOIN ", internal::view_text(v, db_type_));
  return *this;
}

QueryBuilder& QueryBuilder::JOIN(const QueryBuilder& sub, const std::string& alias) {
  if (SQLQuery* q = VEXEL_IMPL()) q->JOIN(" JOIN ", subquery(sub, alias));
  return *this;
}

QueryBuilder& QueryBuilder::LEFT_JOIN(const tab& t) {
  if (SQLQuery* q = VEXEL_IMPL()) q->join_table(" LEFT JOIN ", t);
  return *this;
}

QueryBuilder& QueryBuilder::LEFT_JOIN(const view& v) {
  if (SQLQuery* q = VEXEL_IMPL()) q->JOIN(" LEFT JOIN ", internal::view_text(v, db_type_));
  return *this;
}

QueryBuilder& QueryBuilder::LEFT_JOIN(const QueryBuilder& sub, const std::string& alias) {
  if (SQLQuery* q = VEXEL_IMPL()) q->JOIN(" LEFT JOIN ", subquery(sub, alias));
  return *this;
}

QueryBuilder& QueryBuilder::RIGHT_JOIN(const tab& t) {
  if (SQLQuery* q = VEXEL_IMPL()) q->join_table(" RIGHT JOIN ", t);
  return *this;
}

QueryBuilder& QueryBuilder::RIGHT_JOIN(const view& v) {
  if (SQLQuery* q = VEXEL_IMPL()) q->JOIN(" RIGHT JOIN ", internal::view_text(v, db_type_));
  return *this;
}

QueryBuilder& QueryBuilder::RIGHT_JOIN(const QueryBuilder& sub, const std::string& alias) {
  if (SQLQuery* q = VEXEL_IMPL()) q->JOIN(" RIGHT JOIN ", subquery(sub, alias));
  return *this;
}

QueryBuilder& QueryBuilder::ON(const CommonExpr& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->ON(condition);
  return *this;
}

QueryBuilder& QueryBuilder::ON(Ptr_CommonExpr&& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->ON(std::move(condition));
  return *this;
}

QueryBuilder& QueryBuilder::WHERE(const CommonExpr& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->WHERE(condition);
  return *this;
}

QueryBuilder& QueryBuilder::WHERE(Ptr_CommonExpr&& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->WHERE(std::move(condition));
  return *this;
}

QueryBuilder& QueryBuilder::HAVING(const CommonExpr& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->HAVING(condition);
  return *this;
}

QueryBuilder& QueryBuilder::HAVING(Ptr_CommonExpr&& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->HAVING(std::move(condition));
  return *this;
}

QueryBuilder& QueryBuilder::AND(const CommonExpr& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->AND(condition);
  return *this;
}

QueryBuilder& QueryBuilder::OR(const CommonExpr& condition) {
  if (SQLQuery* q = VEXEL_IMPL()) q->OR(condition);
  return *this;
}

QueryBuilder& QueryBuilder::GROUP_BY(const std::vector<col>& cols) {
  if (SQLQuery* q = VEXEL_IMPL()) q->GROUP_BY(cols);
  return *this;
}

QueryBuilder& QueryBuilder::GROUP_BY(std::initializer_list<col> cols) {
  if (SQLQuery* q = VEXEL_IMPL()) q->GROUP_BY(cols);
  return *this;
}

QueryBuilder& QueryBuilder::ORDER_BY(const std::vector<col>& cols) {
  if (SQLQuery* q = VEXEL_IMPL()) q->ORDER_BY(cols);
  return *this;
}

QueryBuilder& QueryBuilder::ORDER_BY(std::initializer_list<col> cols) {
  if (SQLQuery* q = VEXEL_IMPL()) q->ORDER_BY(cols);
  return *this;
}

QueryBuilder& QueryBuilder::LIMIT(int limit) {
  if (SQLQuery* q = VEXEL_IMPL()) q->LIMIT(limit);
  return *this;
}

QueryBuilder& QueryBuilder::OFFSET(int offset) {
  if (SQLQuery* q = VEXEL_IMPL()) q->OFFSET(offset);
  return *this;
}

QueryBuilder& QueryBuilder::UNION(const QueryBuilder& other) {
  if (SQLQuery* q = VEXEL_IMPL()) q->UNION(other.tosql());
  return *this;
}

QueryBuilder& QueryBuilder::UNION_ALL(const QueryBuilder& other) {
  if (SQLQuery* q = VEXEL_IMPL()) q->UNION_ALL(other.tosql());
  return *this;
}

QueryBuilder& QueryBuilder::EXCEPT(const QueryBuilder& other) {
  if (SQLQuery* q = VEXEL_IMPL()) q->EXCEPT(other.tosql());
  return *this;
}

QueryBuilder& QueryBuilder::INTERSECT(const QueryBuilder& other) {
  if (SQLQuery* q = VEXEL_IMPL()) q->INTERSECT(other.tosql());
  return *this;
}

bool QueryBuilder::Execute() {
  SQLQuery* q = VEXEL_IMPL();
  if (q == nullptr) return false;
  return public_view_ ? q->ExecuteQueryContainView() : q->Execute();
}

bool QueryBuilder::ExecuteQueryUDT(const int& time_out) {
  SQLQuery* q = VEXEL_IMPL();
  return q != nullptr && q->ExecuteQueryUDT(time_out);
}

bool QueryBuilder::ExecuteSortByCollate(const std::string& collate_name) {
  SQLQuery* q = VEXEL_IMPL();
  return q != nullptr && q->ExecuteSortByCollate(collate_name);
}

bool QueryBuilder::ExecuteLoop() {
  SQLQuery* q = VEXEL_IMPL();
  return q != nullptr && q->ExecuteLoop();
}

}  // namespace vexel
