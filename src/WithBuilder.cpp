#include "vexel/WithBuilder.h"

#include "SQLWith.h"
#include "internal/Facade.h"
#include "vexel/DeleteBuilder.h"
#include "vexel/InsertBuilder.h"
#include "vexel/QueryBuilder.h"
#include "vexel/UpdateBuilder.h"

// A builder without an implementation (after a move, or when allocation
// failed) answers every call silently with an empty text or false: hosts do
// not expect a log line from this facade.

namespace vexel {

WithBuilder::WithBuilder(const std::shared_ptr<tessel::CConnect>& conn)
    : db_conn_(conn), db_type_(internal::dialect_of(conn)) {
  ptr_builder_ = make_with(db_type_, db_conn_);
}

// A copy keeps the facade's connection, so that Reset on it starts a fresh
// statement on the same connection and dialect.
WithBuilder::WithBuilder(const WithBuilder& other)
    : db_conn_(other.db_conn_), db_type_(other.db_type_) {
  ptr_builder_ = internal::copy_or_fresh(db_type_, other.ptr_builder_, &copy_with, &make_with);
}

WithBuilder::WithBuilder(WithBuilder&& other) noexcept
    : ptr_builder_(std::move(other.ptr_builder_)), db_type_(other.db_type_) {}

WithBuilder& WithBuilder::operator=(const WithBuilder& other) {
  if (this == &other) return *this;
  WithBuilder copy(other);
  ptr_builder_ = std::move(copy.ptr_builder_);
  db_conn_ = other.db_conn_;
  db_type_ = copy.db_type_;
  return *this;
}

WithBuilder& WithBuilder::operator=(WithBuilder&& other) noexcept {
  if (this == &other) return *this;
  ptr_builder_ = std::move(other.ptr_builder_);
  db_conn_ = std::move(other.db_conn_);
  db_type_ = other.db_type_;
  return *this;
}

WithBuilder::~WithBuilder() = default;

void WithBuilder::Reset() {
  ptr_builder_.reset();
  db_type_ = internal::dialect_of(db_conn_);
  ptr_builder_ = make_with(db_type_, db_conn_);
}

std::string WithBuilder::tosql() const {
  return ptr_builder_ ? ptr_builder_->tosql() : std::string();
}

namespace {

// Any builder's text, taken when it is given.
template <typename Builder>
WithBuilder& add_named(WithBuilder& with, SQLWith* impl, const std::string& name,
                       const Builder& statement) {
  if (impl != nullptr) impl->AS(name, statement.tosql());
  return with;
}

}  // namespace

WithBuilder& WithBuilder::AS(const std::string& name, const QueryBuilder& statement) {
  return add_named(*this, GetImpl(), name, statement);
}
WithBuilder& WithBuilder::AS(const std::string& name, const InsertBuilder& statement) {
  return add_named(*this, GetImpl(), name, statement);
}
WithBuilder& WithBuilder::AS(const std::string& name, const UpdateBuilder& statement) {
  return add_named(*this, GetImpl(), name, statement);
}
WithBuilder& WithBuilder::AS(const std::string& name, const DeleteBuilder& statement) {
  return add_named(*this, GetImpl(), name, statement);
}

WithBuilder& WithBuilder::RECURSIVE() {
  if (ptr_builder_) ptr_builder_->RECURSIVE();
  return *this;
}

WithBuilder& WithBuilder::WithDo(const std::string& sql) {
  if (ptr_builder_) ptr_builder_->WithDo(sql);
  return *this;
}

WithBuilder& WithBuilder::WithDo(const QueryBuilder& statement) {
  return WithDo(statement.tosql());
}
WithBuilder& WithBuilder::WithDo(const InsertBuilder& statement) {
  return WithDo(statement.tosql());
}
WithBuilder& WithBuilder::WithDo(const UpdateBuilder& statement) {
  return WithDo(statement.tosql());
}
WithBuilder& WithBuilder::WithDo(const DeleteBuilder& statement) {
  return WithDo(statement.tosql());
}

bool WithBuilder::Execute() { return ptr_builder_ && ptr_builder_->Execute(); }

bool WithBuilder::ExecuteQueryUDT(const int& time_out) {
  return ptr_builder_ && ptr_builder_->ExecuteQueryUDT(time_out);
}

bool WithBuilder::ExecuteSortByCollate(const std::string& collate_name) {
  return ptr_builder_ && ptr_builder_->ExecuteSortByCollate(collate_name);
}

bool WithBuilder::ExecuteLoop() { return ptr_builder_ && ptr_builder_->ExecuteLoop(); }

}  // namespace vexel
