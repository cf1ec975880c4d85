#include "vexel/SeqenceBuilder.h"

#include "SQLSeq.h"
#include "internal/Facade.h"
#include "internal/Log.h"
#include "internal/Text.h"

namespace vexel {
SeqenceBuilder::SeqenceBuilder(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  db_type_ = internal::dialect_of(db_conn_);
  ptr_builder_ = make_seq(db_type_, db_conn_);
}

SeqenceBuilder::SeqenceBuilder(const SeqenceBuilder& other) : db_type_(other.db_type_) {
  ptr_builder_ = internal::copy_or_fresh(db_type_, other.ptr_builder_, &copy_seq, &make_seq);
}

SeqenceBuilder& SeqenceBuilder::operator=(const SeqenceBuilder& other) {
  if (this == &other) return *this;
  ptr_builder_ = other.ptr_builder_;
  db_conn_ = other.db_conn_;
  db_type_ = other.db_type_;
  return *this;
}

SeqenceBuilder::~SeqenceBuilder() = default;

void SeqenceBuilder::Reset() {
  ptr_builder_.reset();
  db_type_ = internal::dialect_or_log(db_conn_, VEXEL_SITE);
  ptr_builder_ = make_seq(db_type_, db_conn_);
}

SeqenceBuilder& SeqenceBuilder::NEXT_VAL(const seq& s, const tab& t) {
  if (SQLSeq* b = VEXEL_IMPL()) b->NEXT_VAL(s.seq_name(), internal::table_text(t, db_type_));
  return *this;
}

SeqenceBuilder& SeqenceBuilder::MANUAL_NEXT_VAL(const seq& s, const tab& t, const col& c) {
  if (SQLSeq* b = VEXEL_IMPL()) {
    b->MANUAL_NEXT_VAL(s.seq_name(), internal::table_text(t, db_type_),
                       internal::column_text(c, db_type_));
  }
  return *this;
}

SeqenceBuilder& SeqenceBuilder::SET_VAL(const seq& s, const int& value, const tab& t) {
  if (SQLSeq* b = VEXEL_IMPL()) b->SET_VAL(s.seq_name(), value, internal::table_text(t, db_type_));
  return *this;
}

SeqenceBuilder& SeqenceBuilder::SET_VAL(const seq& s, const aggr_func& aggregate, const tab& t) {
  if (SQLSeq* b = VEXEL_IMPL()) {
    b->SET_VAL(s.seq_name(), internal::column_text(aggregate, db_type_),
               internal::table_text(t, db_type_));
  }
  return *this;
}

std::string SeqenceBuilder::tosql_next() const {
  const SQLSeq* b = VEXEL_IMPL();
  return b != nullptr ? b->tosql_next() : std::string();
}

std::string SeqenceBuilder::tosql_set() const {
  const SQLSeq* b = VEXEL_IMPL();
  return b != nullptr ? b->tosql_set() : std::string();
}

bool SeqenceBuilder::Execute() {
  SQLSeq* b = VEXEL_IMPL();
  return b != nullptr && b->Execute();
}

}  // namespace vexel
