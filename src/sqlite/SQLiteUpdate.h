// SQLite UPDATE: no VACUUM text, the UPDATE(col) short form, batch rows as CASE expressions.
#ifndef VEXEL_SQLITEUPDATE_H
#define VEXEL_SQLITEUPDATE_H

#include <memory>
#include <string>

#include "SQLUpdate.h"

namespace vexel {

class SQLiteUpdate final : public SQLUpdate {
 public:
  explicit SQLiteUpdate(const std::shared_ptr<tessel::CConnect>& conn) : SQLUpdate(conn) {}
  explicit SQLiteUpdate(const SQLUpdate& other) : SQLUpdate(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLITEUPDATE_H
