// SQL Server INSERT: RETURNING as OUTPUT, ON_CONFLICT as a one-row MERGE.
#ifndef VEXEL_SQLSERVERINSERT_H
#define VEXEL_SQLSERVERINSERT_H

#include <memory>
#include <string>

#include "SQLInsert.h"

namespace vexel {

class SQLServerInsert final : public SQLInsert {
 public:
  explicit SQLServerInsert(const std::shared_ptr<tessel::CConnect>& conn) : SQLInsert(conn) {}
  explicit SQLServerInsert(const SQLInsert& other) : SQLInsert(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLSERVERINSERT_H
