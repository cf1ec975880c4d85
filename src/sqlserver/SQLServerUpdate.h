// SQL Server UPDATE: plain SET list, OUTPUT inserted.<col> before the condition.
#ifndef VEXEL_SQLSERVERUPDATE_H
#define VEXEL_SQLSERVERUPDATE_H

#include <memory>
#include <string>

#include "SQLUpdate.h"

namespace vexel {

class SQLServerUpdate final : public SQLUpdate {
 public:
  explicit SQLServerUpdate(const std::shared_ptr<tessel::CConnect>& conn) : SQLUpdate(conn) {}
  explicit SQLServerUpdate(const SQLUpdate& other) : SQLUpdate(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLSERVERUPDATE_H
