// SQLite WITH: every form runs as a plain query.
#ifndef VEXEL_SQLITEWITH_H
#define VEXEL_SQLITEWITH_H

#include <memory>
#include <string>

#include "SQLWith.h"

namespace vexel {

class SQLiteWith final : public SQLWith {
 public:
  explicit SQLiteWith(const std::shared_ptr<tessel::CConnect>& conn) : SQLWith(conn) {}
  explicit SQLiteWith(const SQLWith& other) : SQLWith(other) {}

  std::string tosql() const override { return render(); }
  bool Execute() override;
  bool ExecuteQueryUDT(const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& collate_name) override;
  bool ExecuteLoop() override;
};

}  // namespace vexel

#endif  // VEXEL_SQLITEWITH_H
