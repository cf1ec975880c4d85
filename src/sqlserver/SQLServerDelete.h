// SQL Server DELETE: OUTPUT deleted.<col> before the condition, run as rendered.
#ifndef VEXEL_SQLSERVERDELETE_H
#define VEXEL_SQLSERVERDELETE_H

#include <memory>
#include <string>

#include "SQLDelete.h"

namespace vexel {

class SQLServerDelete final : public SQLDelete {
 public:
  explicit SQLServerDelete(const std::shared_ptr<tessel::CConnect>& conn) : SQLDelete(conn) {}
  explicit SQLServerDelete(const SQLDelete& other) : SQLDelete(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLSERVERDELETE_H
