// PostgreSQL UPDATE: VACUUM lists, batch rows joined from a VALUES list, RETURNING last.
#ifndef VEXEL_PGUPDATE_H
#define VEXEL_PGUPDATE_H

#include <memory>
#include <string>

#include "SQLUpdate.h"

namespace vexel {

class PGUpdate final : public SQLUpdate {
 public:
  explicit PGUpdate(const std::shared_ptr<tessel::CConnect>& conn) : SQLUpdate(conn) {}
  explicit PGUpdate(const SQLUpdate& other) : SQLUpdate(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_PGUPDATE_H
