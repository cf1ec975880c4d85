#include "vexel/UpdateBuilder.h"

#include <utility>

#include "SQLUpdate.h"
#include "internal/Facade.h"
#include "internal/Log.h"
#include "internal/StrictWhere.h"
#include "internal/Text.h"
#include "vexel/ArrayExpr.h"
#include "vexel/QueryBuilder.h"
#include "vexel/SQLExpr.h"

namespace vexel {

UpdateBuilder::UpdateBuilder(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  db_type_ = internal::dialect_of(db_conn_);
  place(ptr_builder_, db_type_, db_conn_);
}

// A copy is independent: its own implementation with the clauses and the
// implementation's connection.
UpdateBuilder::UpdateBuilder(const UpdateBuilder& other)
    : db_type_(other.db_type_), returning_(other.returning_), strict_where_(other.strict_where_) {
  internal::copy_or_fresh(db_type_, ptr_builder_, other.ptr_builder_);
}

// Both facades then share one implementation (see QueryBuilder::operator=).
UpdateBuilder& UpdateBuilder::operator=(const UpdateBuilder& other) {
  if (this == &other) return *this;
  ptr_builder_.share(other.ptr_builder_,
                     [&](const SQLUpdate& b) { return copy_update(other.db_type_, b); });
  db_conn_ = other.db_conn_;
  db_type_ = other.db_type_;
  returning_ = other.returning_;
  strict_where_ = other.strict_where_;
  return *this;
}

UpdateBuilder::~UpdateBuilder() = default;

void UpdateBuilder::Reset() {
  db_type_ = internal::dialect_or_log(db_conn_, VEXEL_SITE);
  place(ptr_builder_, db_type_, db_conn_);
  returning_ = false;
}

std::vector<std::string> UpdateBuilder::table_names(const std::vector<tab>& tables) const {
  std::vector<std::string> names;
  names.reserve(tables.size());
  for (const tab& t : tables) names.push_back(internal::table_text(t, db_type_));
  return names;
}

std::string UpdateBuilder::tosql() const {
  const SQLUpdate* b = VEXEL_IMPL();
  return b != nullptr ? b->tosql() : std::string();
}

UpdateBuilder& UpdateBuilder::UPDATE(const tab& t) {
  if (SQLUpdate* b = VEXEL_IMPL()) internal::assign_table(b->UPDATE(), t);
  return *this;
}

UpdateBuilder& UpdateBuilder::UPDATE(const col& c) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->UPDATE_COLUMN(internal::column_text(c, db_type_));
  return *this;
}

UpdateBuilder& UpdateBuilder::SET(const col& c, const SQLValue& v) {
  if (SQLUpdate* b = VEXEL_IMPL()) {
    std::string scratch;
    b->SET(c, db_type_, internal::ValueText::view(v, db_type_, scratch));
  }
  return *this;
}

UpdateBuilder& UpdateBuilder::SET(const col& c, const col& value) {
  if (SQLUpdate* b = VEXEL_IMPL()) {
    b->SET(c, db_type_, internal::ColumnName(value, db_type_));
  }
  return *this;
}

UpdateBuilder& UpdateBuilder::SET(const col& c, const CommonExpr& e) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->SET(c, db_type_, e.GetExpr(db_type_));
  return *this;
}

UpdateBuilder& UpdateBuilder::SET(const col& c, const QueryBuilder& q) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->SET(c, db_type_, "(" + q.tosql() + ")");
  return *this;
}

UpdateBuilder& UpdateBuilder::SET(const col& c, const std::vector<int>& values) {
  return SET(c, static_cast<const CommonExpr&>(ArrayValue(values)));
}

UpdateBuilder& UpdateBuilder::SET(const col& c, const std::vector<std::string>& values) {
  return SET(c, static_cast<const CommonExpr&>(ArrayValue(values)));
}

UpdateBuilder& UpdateBuilder::SET(const col& c,
                                  const std::map<tessel::DBTYPE, SQLValue>& per_dialect) {
  SQLUpdate* b = VEXEL_IMPL();
  if (b == nullptr) return *this;
  const auto it = per_dialect.find(db_type_);
  if (it == per_dialect.end()) {
    VEXEL_LOG(5, "[%s]no value for db_type %d.[%s(%d)]", static_cast<int>(db_type_));
    return *this;
  }
  b->SET(c, db_type_, SQLExpr(it->second).GetExpr(db_type_));
  return *this;
}

UpdateBuilder& UpdateBuilder::WHERE(const CommonExpr& condition) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->WHERE(internal::where_text(condition, db_type_, VEXEL_SITE));
  return *this;
}

UpdateBuilder& UpdateBuilder::WHERE(Ptr_CommonExpr&& condition) {
  if (SQLUpdate* b = VEXEL_IMPL()) {
    internal::where_text(std::move(condition), db_type_, VEXEL_SITE, b->WHERE());
  }
  return *this;
}

UpdateBuilder& UpdateBuilder::AND(const CommonExpr& condition) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->AND(condition.GetExpr(db_type_));
  return *this;
}

UpdateBuilder& UpdateBuilder::OR(const CommonExpr& condition) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->OR(condition.GetExpr(db_type_));
  return *this;
}

UpdateBuilder& UpdateBuilder::RETURNING(const std::vector<col>& cols) {
  if (SQLUpdate* b = VEXEL_IMPL()) {
    b->RETURNING(cols, db_type_);
    returning_ = true;
  }
  return *this;
}

UpdateBuilder& UpdateBuilder::RETURNING(std::initializer_list<col> cols) {
  if (SQLUpdate* b = VEXEL_IMPL()) {
    b->RETURNING(cols, db_type_);
    returning_ = true;
  }
  return *this;
}

UpdateBuilder& UpdateBuilder::VACUUM(const std::vector<tab>& tables) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->VACUUM(table_names(tables));
  return *this;
}

UpdateBuilder& UpdateBuilder::UNION_SET(const col& target, const col& source) {
  if (SQLUpdate* b = VEXEL_IMPL()) {
    b->UNION_SET(internal::column_text(target, db_type_), internal::column_text(source, db_type_));
  }
  return *this;
}

UpdateBuilder& UpdateBuilder::UNION_FROM(const std::vector<tab>& tables) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->UNION_FROM(table_names(tables));
  return *this;
}

UpdateBuilder& UpdateBuilder::UNION_CONDITION(const col& left, const col& right) {
  if (SQLUpdate* b = VEXEL_IMPL()) {
    b->UNION_CONDITION(internal::column_text(left, db_type_),
                       internal::column_text(right, db_type_));
  }
  return *this;
}

UpdateBuilder& UpdateBuilder::BATCH_SET(const std::vector<col>& cols) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->BATCH_SET(internal::with_dialect(cols, db_type_));
  return *this;
}

UpdateBuilder& UpdateBuilder::BATCH_CONDITION(const std::vector<col>& cols) {
  if (SQLUpdate* b = VEXEL_IMPL()) b->BATCH_CONDITION(internal::with_dialect(cols, db_type_));
  return *this;
}

UpdateBuilder& UpdateBuilder::BATCH_VALUES(const std::vector<col>& tmp_cols,
                                           const std::vector<std::vector<SQLValue>>& tmp_values) {
  if (SQLUpdate* b = VEXEL_IMPL())
    b->BATCH_VALUES(internal::with_dialect(tmp_cols, db_type_), tmp_values);
  return *this;
}

UpdateBuilder& UpdateBuilder::set_strict_where(bool strict) {
  strict_where_ = strict;
  return *this;
}

bool UpdateBuilder::Execute() {
  SQLUpdate* b = VEXEL_IMPL();
  if (b == nullptr) return false;
  if (internal::refuse_unfiltered(strict_where_, b->where_renders_empty(), VEXEL_SITE)) {
    return false;
  }
  return returning_ ? b->ExecuteReturning() : b->Execute();
}

}  // namespace vexel
