// SQL Server WITH: every form runs as a plain query.
#ifndef VEXEL_SQLSERVERWITH_H
#define VEXEL_SQLSERVERWITH_H

#include <memory>
#include <string>

#include "SQLWith.h"

namespace vexel {

class SQLServerWith final : public SQLWith {
 public:
  explicit SQLServerWith(const std::shared_ptr<tessel::CConnect>& conn) : SQLWith(conn) {}
  explicit SQLServerWith(const SQLWith& other) : SQLWith(other) {}

  std::string tosql() const override { return render(); }
  bool Execute() override;
  bool ExecuteQueryUDT(const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& collate_name) override;
  bool ExecuteLoop() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLSERVERWITH_H
