#include "vexel/SeqenceBuilder.h"

#include "SQLSeq.h"
#include "internal/Log.h"

// The implementation of the calling operation, or null after the
// "ptr_builder_ is nullptr" line under the caller's name.
#define VEXEL_IMPL() impl(VEXEL_PRETTY_FUNCTION, __FILE__, __LINE__)

namespace vexel {
namespace {

std::string rendered(const tab& t, tessel::DBTYPE db) {
  tab copy(t);
  copy.set_db_type(db);
  return copy.table_name();
}

std::string rendered(const col& c, tessel::DBTYPE db) {
  col copy(c);
  copy.set_db_type(db);
  return copy.col_name();
}

}  // namespace

SeqenceBuilder::SeqenceBuilder(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
  ptr_builder_ = make_seq(db_type_, db_conn_);
}

SeqenceBuilder::SeqenceBuilder(const SeqenceBuilder& other) : db_type_(other.db_type_) {
  if (other.ptr_builder_) {
    ptr_builder_ = copy_seq(db_type_, *other.ptr_builder_);
  } else {
    db_type_ = tessel::DB_POSTGRESQL;
    ptr_builder_ = make_seq(db_type_, nullptr);
  }
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
  if (db_conn_) {
    db_type_ = db_conn_->GetDBType();
  } else {
    db_type_ = tessel::DB_POSTGRESQL;
    VEXEL_LOG(6, "[%s]db_conn is nullptr.[%s(%d)]");
  }
  ptr_builder_ = make_seq(db_type_, db_conn_);
}

SQLSeq* SeqenceBuilder::impl(const char* function, const char* file, int line) const {
  if (!ptr_builder_) {
    VEXEL_LOG_AT((internal::Site{function, file, line}), 5, "[%s]ptr_builder_ is nullptr.[%s(%d)]");
  }
  return ptr_builder_.get();
}

SeqenceBuilder& SeqenceBuilder::NEXT_VAL(const seq& s, const tab& t) {
  if (SQLSeq* b = VEXEL_IMPL()) b->NEXT_VAL(s.seq_name(), rendered(t, db_type_));
  return *this;
}

SeqenceBuilder& SeqenceBuilder::MANUAL_NEXT_VAL(const seq& s, const tab& t, const col& c) {
  if (SQLSeq* b = VEXEL_IMPL()) {
    b->MANUAL_NEXT_VAL(s.seq_name(), rendered(t, db_type_), rendered(c, db_type_));
  }
  return *this;
}

SeqenceBuilder& SeqenceBuilder::SET_VAL(const seq& s, const int& value, const tab& t) {
  if (SQLSeq* b = VEXEL_IMPL()) b->SET_VAL(s.seq_name(), value, rendered(t, db_type_));
  return *this;
}

SeqenceBuilder& SeqenceBuilder::SET_VAL(const seq& s, const aggr_func& aggregate, const tab& t) {
  if (SQLSeq* b = VEXEL_IMPL()) {
    b->SET_VAL(s.seq_name(), rendered(aggregate, db_type_), rendered(t, db_type_));
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
