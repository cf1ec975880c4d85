#include "vexel/InsertBuilder.h"

#include "SQLInsert.h"
#include "internal/Log.h"
#include "vexel/SQLExpr.h"

// The implementation of the calling operation, or null after the
// "ptr_builder_ is nullptr" line under the caller's name.
#define VEXEL_IMPL() impl(VEXEL_PRETTY_FUNCTION, __FILE__, __LINE__)

namespace vexel {

InsertBuilder::InsertBuilder(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
  ptr_builder_ = make_insert(db_type_, db_conn_);
}

// A copy is independent: its own implementation with the clauses and the
// implementation's connection.
InsertBuilder::InsertBuilder(const InsertBuilder& other)
    : db_type_(other.db_type_), returning_(other.returning_) {
  if (other.ptr_builder_) {
    ptr_builder_ = copy_insert(db_type_, *other.ptr_builder_);
  } else {
    db_type_ = tessel::DB_POSTGRESQL;
    ptr_builder_ = make_insert(db_type_, nullptr);
  }
}

InsertBuilder& InsertBuilder::operator=(const InsertBuilder& other) {
  if (this == &other) return *this;
  ptr_builder_ = other.ptr_builder_;
  db_conn_ = other.db_conn_;
  db_type_ = other.db_type_;
  returning_ = other.returning_;
  return *this;
}

InsertBuilder::~InsertBuilder() = default;

void InsertBuilder::Reset() {
  ptr_builder_.reset();
  if (db_conn_) {
    db_type_ = db_conn_->GetDBType();
  } else {
    db_type_ = tessel::DB_POSTGRESQL;
    VEXEL_LOG(6, "[%s]db_conn is nullptr.[%s(%d)]");
  }
  ptr_builder_ = make_insert(db_type_, db_conn_);
  returning_ = false;
}

SQLInsert* InsertBuilder::impl(const char* function, const char* file, int line) const {
  if (!ptr_builder_) {
    VEXEL_LOG_AT((internal::Site{function, file, line}), 5, "[%s]ptr_builder_ is nullptr.[%s(%d)]");
  }
  return ptr_builder_.get();
}

col InsertBuilder::stamped(const col& c) const {
  col copy(c);
  copy.set_db_type(db_type_);
  return copy;
}

std::vector<col> InsertBuilder::stamped(const std::vector<col>& cols) const {
  std::vector<col> copies;
  copies.reserve(cols.size());
  for (const col& c : cols) copies.push_back(stamped(c));
  return copies;
}

std::string InsertBuilder::tosql() const {
  const SQLInsert* b = VEXEL_IMPL();
  return b != nullptr ? b->tosql() : std::string();
}

InsertBuilder& InsertBuilder::INSERT_INTO(const tab& t) {
  if (SQLInsert* b = VEXEL_IMPL()) {
    tab copy(t);
    copy.set_db_type(db_type_);
    b->INSERT_INTO(copy.table_name());
  }
  return *this;
}

InsertBuilder& InsertBuilder::COLUMNS(const std::vector<col>& cols) {
  if (SQLInsert* b = VEXEL_IMPL()) b->COLUMNS(stamped(cols));
  return *this;
}

InsertBuilder& InsertBuilder::VALUES(const std::vector<SQLValue>& row) {
  if (SQLInsert* b = VEXEL_IMPL()) b->VALUES(row);
  return *this;
}

InsertBuilder& InsertBuilder::SET(const col& c, const SQLValue& v) {
  if (SQLInsert* b = VEXEL_IMPL()) b->SET(stamped(c), SQLExpr(v).GetExpr(db_type_));
  return *this;
}

InsertBuilder& InsertBuilder::SET(const col& c, const col& value) {
  if (SQLInsert* b = VEXEL_IMPL()) {
    b->SET(stamped(c), SQLExpr(stamped(value), db_type_).GetExpr(db_type_));
  }
  return *this;
}

InsertBuilder& InsertBuilder::SET(const col& c, const CommonExpr& e) {
  if (SQLInsert* b = VEXEL_IMPL()) b->SET(stamped(c), e.GetExpr(db_type_));
  return *this;
}

InsertBuilder& InsertBuilder::ON_CONFLICT(const std::vector<col>& cols) {
  if (SQLInsert* b = VEXEL_IMPL()) b->ON_CONFLICT(stamped(cols));
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
    b->RETURNING(stamped(cols));
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
