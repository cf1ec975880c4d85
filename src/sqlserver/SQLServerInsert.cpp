#include "sqlserver/SQLServerInsert.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

constexpr SQLInsert::RunForm kExecute{ConnOp::kUpdate, false, false};
constexpr SQLInsert::RunForm kQuery{ConnOp::kQuery, false, false};
constexpr SQLInsert::RunForm kReturning{ConnOp::kReturning, false, false};

}  // namespace

std::string SQLServerInsert::tosql() const {
  std::string sql;
  sqlserver_text(sql, VEXEL_SITE);
  return sql;
}

bool SQLServerInsert::render(std::string& sql, const internal::Site& site) const {
  return sqlserver_text(sql, site);
}
bool SQLServerInsert::Execute() { return run(kExecute, VEXEL_SITE); }
bool SQLServerInsert::ExecuteQuery() { return run(kQuery, VEXEL_SITE); }
bool SQLServerInsert::ExecuteReturning() { return run(kReturning, VEXEL_SITE); }

}  // namespace vexel
