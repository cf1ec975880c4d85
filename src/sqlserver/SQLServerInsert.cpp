#include "sqlserver/SQLServerInsert.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

constexpr SQLInsert::RunForm kExecute{ConnOp::kUpdate, false, false};
constexpr SQLInsert::RunForm kQuery{ConnOp::kQuery, false, false};
constexpr SQLInsert::RunForm kReturning{ConnOp::kReturning, false, false};

}  // namespace

std::string SQLServerInsert::tosql() const { return sqlserver_text(); }

bool SQLServerInsert::Execute() { return run(kExecute, VEXEL_SITE); }
bool SQLServerInsert::ExecuteQuery() { return run(kQuery, VEXEL_SITE); }
bool SQLServerInsert::ExecuteReturning() { return run(kReturning, VEXEL_SITE); }

}  // namespace vexel
