// SQL Server SELECT: no select expression, " FROM " always written, OFFSET/FETCH paging, no ";".
#ifndef VEXEL_SQLSERVERQUERY_H
#define VEXEL_SQLSERVERQUERY_H

#include <memory>
#include <string>

#include "SQLQuery.h"

namespace vexel {

class SQLServerQuery final : public SQLQuery {
 public:
  explicit SQLServerQuery(const std::shared_ptr<tessel::CConnect>& conn) : SQLQuery(conn) {}
  explicit SQLServerQuery(const SQLQuery& other) : SQLQuery(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQueryContainView() override;
  bool ExecuteQueryUDT(const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& collate_name) override;
  bool ExecuteLoop() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLSERVERQUERY_H
