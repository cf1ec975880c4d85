// PostgreSQL INSERT: after Execute or ExecuteQuery, the EXCLUDE sequence read runs so the host can
// read the value.
#ifndef VEXEL_PGINSERT_H
#define VEXEL_PGINSERT_H

#include <memory>
#include <string>

#include "SQLInsert.h"

namespace vexel {

class PGInsert final : public SQLInsert {
 public:
  explicit PGInsert(const std::shared_ptr<tessel::CConnect>& conn) : SQLInsert(conn) {}
  explicit PGInsert(const SQLInsert& other) : SQLInsert(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_PGINSERT_H
