// Sequences emulated through sqlite_sequence, the table where SQLite keeps
// each AUTOINCREMENT table's counter under the table's unqualified name.
#ifndef VEXEL_SQLITESEQ_H
#define VEXEL_SQLITESEQ_H

#include <memory>
#include <string>

#include "SQLSeq.h"

namespace vexel {

class SQLiteSeq final : public SQLSeq {
 public:
  explicit SQLiteSeq(const std::shared_ptr<tessel::CConnect>& conn) : SQLSeq(conn) {}
  explicit SQLiteSeq(const SQLSeq& other) : SQLSeq(other) {}

  std::string tosql_set() const override;
  bool Execute() override;
  std::string tosql_next() const override;

 private:
  // The table name after the schema, or the whole name.
  std::string bare_name() const;
};

}  // namespace vexel

#endif  // VEXEL_SQLITESEQ_H
