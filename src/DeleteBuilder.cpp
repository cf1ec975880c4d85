#include "vexel/DeleteBuilder.h"

#include <utility>

#include "SQLDelete.h"
#include "internal/Facade.h"
#include "internal/Log.h"
#include "internal/StrictWhere.h"
#include "internal/Text.h"
#include "vexel/CommonExpr.h"

namespace vexel {

DeleteBuilder::DeleteBuilder(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  db_type_ = internal::dialect_or_log(db_conn_, VEXEL_SITE);
  place(ptr_builder_, db_type_, db_conn_);
}

// A copy is independent: its own implementation with the clauses and the
// implementation's connection.
DeleteBuilder::DeleteBuilder(const DeleteBuilder& other)
    : db_type_(other.db_type_), returning_(other.returning_), strict_where_(other.strict_where_) {
  internal::copy_or_fresh(db_type_, ptr_builder_, other.ptr_builder_);
}

// Takes the statement over; the other builder is left without one.
DeleteBuilder::DeleteBuilder(DeleteBuilder&& other) noexcept
    : db_conn_(std::move(other.db_conn_)),
      db_type_(other.db_type_),
      returning_(other.returning_),
      strict_where_(other.strict_where_) {
  take(other);
}

// Both facades then share one implementation (see QueryBuilder::operator=).
DeleteBuilder& DeleteBuilder::operator=(const DeleteBuilder& other) {
  if (this == &other) return *this;
  ptr_builder_.share(other.ptr_builder_,
                     [&](const SQLDelete& b) { return copy_delete(other.db_type_, b); });
  db_conn_ = other.db_conn_;
  db_type_ = other.db_type_;
  returning_ = other.returning_;
  strict_where_ = other.strict_where_;
  return *this;
}

DeleteBuilder& DeleteBuilder::operator=(DeleteBuilder&& other) noexcept {
  if (this == &other) return *this;
  db_conn_ = std::move(other.db_conn_);
  db_type_ = other.db_type_;
  returning_ = other.returning_;
  strict_where_ = other.strict_where_;
  take(other);
  return *this;
}

void DeleteBuilder::take(DeleteBuilder& other) noexcept {
  const tessel::DBTYPE db = db_type_;
  ptr_builder_.take(other.ptr_builder_,
                    [db](detail::DeleteSlot& to, const SQLDelete& b) { place(to, db, b); });
}

DeleteBuilder::~DeleteBuilder() = default;

std::string DeleteBuilder::tosql() const {
  const SQLDelete* b = VEXEL_IMPL();
  return b != nullptr ? b->tosql() : std::string();
}

DeleteBuilder& DeleteBuilder::DELETE_FROM(const tab& t) {
  if (SQLDelete* b = VEXEL_IMPL()) internal::assign_table(b->DELETE_FROM(), t);
  return *this;
}

DeleteBuilder& DeleteBuilder::WHERE(const CommonExpr& condition) {
  if (SQLDelete* b = VEXEL_IMPL()) b->WHERE(internal::where_text(condition, db_type_, VEXEL_SITE));
  return *this;
}

DeleteBuilder& DeleteBuilder::WHERE(Ptr_CommonExpr&& condition) {
  if (SQLDelete* b = VEXEL_IMPL()) {
    internal::where_text(std::move(condition), db_type_, VEXEL_SITE, b->WHERE());
  }
  return *this;
}

DeleteBuilder& DeleteBuilder::AND(const CommonExpr& condition) {
  if (SQLDelete* b = VEXEL_IMPL()) b->AND(condition.GetExpr(db_type_));
  return *this;
}

DeleteBuilder& DeleteBuilder::OR(const CommonExpr& condition) {
  if (SQLDelete* b = VEXEL_IMPL()) b->OR(condition.GetExpr(db_type_));
  return *this;
}

DeleteBuilder& DeleteBuilder::RETURNING(const std::vector<col>& cols) {
  if (SQLDelete* b = VEXEL_IMPL()) {
    b->RETURNING(cols, db_type_);
    returning_ = true;
  }
  return *this;
}

DeleteBuilder& DeleteBuilder::RETURNING(std::initializer_list<col> cols) {
  if (SQLDelete* b = VEXEL_IMPL()) {
    b->RETURNING(cols, db_type_);
    returning_ = true;
  }
  return *this;
}

DeleteBuilder& DeleteBuilder::set_strict_where(bool strict) {
  strict_where_ = strict;
  return *this;
}

bool DeleteBuilder::Execute() {
  SQLDelete* b = VEXEL_IMPL();
  if (b == nullptr) return false;
  if (internal::refuse_unfiltered(strict_where_, b->where_renders_empty(), VEXEL_SITE)) {
    return false;
  }
  return returning_ ? b->ExecuteReturning() : b->Execute();
}

}  // namespace vexel
