// PostgreSQL DELETE: RETURNING after the condition, ";" when run.
#ifndef VEXEL_PGDELETE_H
#define VEXEL_PGDELETE_H

#include <memory>
#include <string>

#include "SQLDelete.h"

namespace vexel {

class PGDelete final : public SQLDelete {
 public:
  explicit PGDelete(const std::shared_ptr<tessel::CConnect>& conn) : SQLDelete(conn) {}
  explicit PGDelete(const SQLDelete& other) : SQLDelete(other) {}

  std::string tosql() const override;
  bool Execute() override;
  bool ExecuteQuery() override;
  bool ExecuteReturning() override;
};

}  // namespace vexel

#endif  // VEXEL_PGDELETE_H
