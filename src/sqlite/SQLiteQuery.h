// SQLite SELECT: PostgreSQL's text; the time-out, collation and loop forms run as plain queries.
#ifndef VEXEL_SQLITEQUERY_H
#define VEXEL_SQLITEQUERY_H

#include <memory>
#include <string>

#include "SQLQuery.h"

namespace vexel {

class SQLiteQuery final : public SQLQuery {
 public:
  explicit SQLiteQuery(const std::shared_ptr<tessel::CConnect>& conn) : SQLQuery(conn) {}
  explicit SQLiteQuery(const SQLQuery& other) : SQLQuery(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQueryContainView() override;
  bool ExecuteQueryUDT(const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& collate_name) override;
  bool ExecuteLoop() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLITEQUERY_H
