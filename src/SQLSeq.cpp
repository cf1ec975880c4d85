#include "SQLSeq.h"

#include "internal/Facade.h"
#include "internal/Text.h"
#include "postgres/PGSeq.h"
#include "sqlite/SQLiteSeq.h"

namespace vexel {

SQLSeq::SQLSeq(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
}

void SQLSeq::NEXT_VAL(const std::string& seq_name, const std::string& table_name) {
  next_seq_name_ = seq_name;
  table_name_ = table_name;
}

void SQLSeq::MANUAL_NEXT_VAL(const std::string& seq_name, const std::string& table_name,
                             const std::string& column) {
  NEXT_VAL(seq_name, table_name);
  manual_column_ = column;
}

void SQLSeq::SET_VAL(const std::string& seq_name, int32_t value, const std::string& table_name) {
  set_seq_name_ = seq_name;
  value_ = value;
  table_name_ = table_name;
}

void SQLSeq::SET_VAL(const std::string& seq_name, const std::string& aggregate,
                     const std::string& table_name) {
  set_seq_name_ = seq_name;
  aggregate_ = aggregate;
  table_name_ = table_name;
}

std::shared_ptr<SQLSeq> make_seq(tessel::DBTYPE db, const std::shared_ptr<tessel::CConnect>& conn) {
  // SQL Server writes sequences as PostgreSQL does.
  return internal::make_dialect<PGSeq, SQLiteSeq, PGSeq, SQLSeq>(db, conn);
}

std::shared_ptr<SQLSeq> copy_seq(tessel::DBTYPE db, const SQLSeq& other) {
  return internal::make_dialect<PGSeq, SQLiteSeq, PGSeq, SQLSeq>(db, other);
}

}  // namespace vexel
