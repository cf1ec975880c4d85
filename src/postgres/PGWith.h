// PostgreSQL WITH: the time-out, collation and loop forms go to the connection's dedicated
// operations.
#ifndef VEXEL_PGWITH_H
#define VEXEL_PGWITH_H

#include <memory>
#include <string>

#include "SQLWith.h"

namespace vexel {

class PGWith final : public SQLWith {
 public:
  explicit PGWith(const std::shared_ptr<tessel::CConnect>& conn) : SQLWith(conn) {}
  explicit PGWith(const SQLWith& other) : SQLWith(other) {}

  std::string tosql() const override { return render(); }
  bool Execute() override;
  bool ExecuteQueryUDT(const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& collate_name) override;
  bool ExecuteLoop() override;
};

}  // namespace vexel

#endif  // VEXEL_PGWITH_H
