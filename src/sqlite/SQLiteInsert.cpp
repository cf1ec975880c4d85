#include "sqlite/SQLiteInsert.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

constexpr SQLInsert::RunForm kExecute{ConnOp::kUpdate, false, false};
constexpr SQLInsert::RunForm kQuery{ConnOp::kQuery, false, false};
constexpr SQLInsert::RunForm kReturning{ConnOp::kReturning, false, false};

}  // namespace

std::string SQLiteInsert::tosql() const { return upsert_text(); }
bool SQLiteInsert::Execute() { return run(kExecute, VEXEL_SITE); }
bool SQLiteInsert::ExecuteQuery() { return run(kQuery, VEXEL_SITE); }
bool SQLiteInsert::ExecuteReturning() { return run(kReturning, VEXEL_SITE); }

}  // namespace vexel
