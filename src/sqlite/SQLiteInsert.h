// SQLite INSERT: the PostgreSQL text (ON CONFLICT, RETURNING); no sequence read.
#ifndef VEXEL_SQLITEINSERT_H
#define VEXEL_SQLITEINSERT_H

#include <memory>
#include <string>

#include "SQLInsert.h"

namespace vexel {

class SQLiteInsert final : public SQLInsert {
 public:
  explicit SQLiteInsert(const std::shared_ptr<tessel::CConnect>& conn) : SQLInsert(conn) {}
  explicit SQLiteInsert(const SQLInsert& other) : SQLInsert(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLITEINSERT_H
