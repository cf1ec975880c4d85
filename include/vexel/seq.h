/// \file
/// A sequence reference (PostgreSQL sequences; emulated on SQLite).
#ifndef VEXEL_SEQ_H
#define VEXEL_SEQ_H

#include <string>

#include "tessel/DBType.h"
#include "vexel/export.h"

namespace vexel {

/// A sequence reference for SeqenceBuilder, CURRVAL and SETVAL.
class VEXEL_API seq {
 public:
  seq() = default;
  ///@{
  /// A sequence named `name`.
  seq(const std::string& name) : seq_name_(name) {}
  seq(const char* name) : seq_name_(name != nullptr ? name : "") {}
  ///@}

  ///@{
  /// The name and dialect.
  const std::string& seq_name() const { return seq_name_; }
  tessel::DBTYPE db_type() const { return db_type_; }
  ///@}
  /// Sets the dialect.
  void set_db_type(tessel::DBTYPE db) { db_type_ = db; }

 private:
  std::string seq_name_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_SEQ_H
