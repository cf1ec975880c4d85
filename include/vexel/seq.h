/// \file
/// A sequence reference (PostgreSQL sequences; emulated on SQLite).
#ifndef VEXEL_SEQ_H
#define VEXEL_SEQ_H

#include <string>

#include "tessel/DBType.h"
#include "vexel/export.h"

namespace vexel {

class VEXEL_API seq {
 public:
  seq() = default;
  seq(const std::string& name) : seq_name_(name) {}
  seq(const char* name) : seq_name_(name != nullptr ? name : "") {}

  const std::string& seq_name() const { return seq_name_; }
  tessel::DBTYPE db_type() const { return db_type_; }
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }

 private:
  std::string seq_name_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_SEQ_H
