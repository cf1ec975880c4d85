// PostgreSQL SELECT: the reference form; the time-out, collation and loop forms go to the
// connection's dedicated operations.
#ifndef VEXEL_PGQUERY_H
#define VEXEL_PGQUERY_H

#include <memory>
#include <string>

#include "SQLQuery.h"

namespace vexel {

class PGQuery final : public SQLQuery {
 public:
  explicit PGQuery(const std::shared_ptr<tessel::CConnect>& conn) : SQLQuery(conn) {}
  explicit PGQuery(const SQLQuery& other) : SQLQuery(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQueryContainView() override;
  bool ExecuteQueryUDT(const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& collate_name) override;
  bool ExecuteLoop() override;
};

}  // namespace vexel

#endif  // VEXEL_PGQUERY_H
