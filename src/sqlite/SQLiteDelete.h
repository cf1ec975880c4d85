// SQLite DELETE: the PostgreSQL text with the schema cut from the table name.
#ifndef VEXEL_SQLITEDELETE_H
#define VEXEL_SQLITEDELETE_H

#include <memory>
#include <string>

#include "SQLDelete.h"

namespace vexel {

class SQLiteDelete final : public SQLDelete {
 public:
  explicit SQLiteDelete(const std::shared_ptr<tessel::CConnect>& conn) : SQLDelete(conn) {}
  explicit SQLiteDelete(const SQLDelete& other) : SQLDelete(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLITEDELETE_H
