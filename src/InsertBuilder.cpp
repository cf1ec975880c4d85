#include "vexel/InsertBuilder.h"

#include "SQLInsert.h"
#include "internal/Facade.h"
#include "internal/Log.h"
#include "internal/Text.h"
#include "vexel/QueryBuilder.h"
#include "vexel/SQLExpr.h"

namespace vexel {

InsertBuilder::InsertBuilder(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  db_type_ = internal::dialect_of(db_conn_);
  place(ptr_builder_, db_type_, db_conn_);
}

// A copy is independent: its own implementation with the clauses and the
// implementation's connection.
InsertBuilder::InsertBuilder(const InsertBuilder& other)
    : db_type_(other.db_type_), returning_(other.returning_) {
  internal::copy_or_fresh(db_type_, ptr_builder_, other.ptr_builder_);
}

InsertBuilder& InsertBuilder::operator=(const InsertBuilder& other) {
  if (this == &other) return *this;
  ptr_builder_.share(other.ptr_builder_,
                     [&](const SQLInsert& b) { return copy_insert(other.db_type_, b); });
  db_conn_ = other.db_conn_;
  db_type_ = other.db_type_;
  returning_ = other.returning_;
  return *this;
}

InsertBuilder::~InsertBuilder() = default;

void InsertBuilder::Reset() {
  db_type_ = internal::dialect_or_log(db_conn_, VEXEL_SITE);
  place(ptr_builder_, db_type_, db_conn_);
  returning_ = false;
}

std::string InsertBuilder::tosql() const {
  const SQLInsert* b = VEXEL_IMPL();
  return b != nullptr ? b->tosql() : std::string();
}

InsertBuilder& InsertBuilder::INSERT_INTO(const tab& t) {
  if (SQLInsert* b = VEXEL_IMPL()) internal::assign_table(b->INSERT_INTO(), t);
  return *this;
}

InsertBuilder& InsertBuilder::COLUMNS(const std::vector<col>& cols) {
  if (SQLInsert* b = VEXEL_IMPL()) b->COLUMNS(cols, db_type_);
  return *this;
}

InsertBuilder& InsertBuilder::COLUMNS(std::initializer_list<col> cols) {
  if (SQLInsert* b = VEXEL_IMPL()) b->COLUMNS(cols, db_type_);
  return *this;
}

InsertBuilder& InsertBuilder::VALUES(const std::vector<SQLValue>& row) {
  if (SQLInsert* b = VEXEL_IMPL()) b->VALUES(row);
  return *this;
}

InsertBuilder& InsertBuilder::VALUES(std::initializer_list<SQLValue> row) {
  if (SQLInsert* b = VEXEL_IMPL()) b->VALUES(row);
  return *this;
}

InsertBuilder& InsertBuilder::SELECT(const QueryBuilder& rows) {
  if (SQLInsert* b = VEXEL_IMPL()) b->SELECT(rows.tosql());
  return *this;
}

InsertBuilder& InsertBuilder::SET(const col& c, const SQLValue& v) {
  if (SQLInsert* b = VEXEL_IMPL()) {
    std::string scratch;
    b->SET(c, db_type_, internal::ValueText::view(v, db_type_, scratch));
  }
  return *this;
}

InsertBuilder& InsertBuilder::SET(const col& c, const col& value) {
  if (SQLInsert* b = VEXEL_IMPL()) {
    b->SET(c, db_type_, internal::ColumnName(value, db_type_));
  }
  return *this;
}

InsertBuilder& InsertBuilder::SET(const col& c, const CommonExpr& e) {
  if (SQLInsert* b = VEXEL_IMPL()) b->SET(c, db_type_, e.GetExpr(db_type_));
  return *this;
}

InsertBuilder& InsertBuilder::ON_CONFLICT(const std::vector<col>& cols) {
  if (SQLInsert* b = VEXEL_IMPL()) b->ON_CONFLICT(cols, db_type_);
  return *this;
}

InsertBuilder& InsertBuilder::ON_CONFLICT(std::initializer_list<col> cols) {
  if (SQLInsert* b = VEXEL_IMPL()) b->ON_CONFLICT(cols, db_type_);
  return *this;
}

InsertBuilder& InsertBuilder::EXCLUDE(const SeqenceExpr& e) {
  if (SQLInsert* b = VEXEL_IMPL()) b->EXCLUDE(e.GetExpr(db_type_));
  return *this;
}

InsertBuilder& InsertBuilder::WHERE(const CommonExpr& condition) {
  if (SQLInsert* b = VEXEL_IMPL()) b->WHERE(SQLExpr(condition, db_type_).GetExpr(db_type_));
  return *this;
}

InsertBuilder& InsertBuilder::AND(const CommonExpr& condition) {
  if (SQLInsert* b = VEXEL_IMPL()) b->AND(condition.GetExpr(db_type_));
  return *this;
}

InsertBuilder& InsertBuilder::OR(const CommonExpr& condition) {
  if (SQLInsert* b = VEXEL_IMPL()) b->OR(condition.GetExpr(db_type_));
  return *this;
}

InsertBuilder& InsertBuilder::RETURNING(const std::vector<col>& cols) {
  if (SQLInsert* b = VEXEL_IMPL()) {
    b->RETURNING(cols, db_type_);
    returning_ = true;
  }
  return *this;
}

InsertBuilder& InsertBuilder::RETURNING(std::initializer_list<col> cols) {
  if (SQLInsert* b = VEXEL_IMPL()) {
    b->RETURNING(cols, db_type_);
    returning_ = true;
  }
  return *this;
}

bool InsertBuilder::Execute() {
  SQLInsert* b = VEXEL_IMPL();
  if (b == nullptr) return false;
  return returning_ ? b->ExecuteReturning() : b->Execute();
}

}  // namespace vexel
