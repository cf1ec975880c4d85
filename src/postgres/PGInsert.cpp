#include "postgres/PGInsert.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

// The failed insert of ExecuteQuery reports the connection's query error.
constexpr SQLInsert::RunForm kExecute{ConnOp::kUpdate, false, true};
constexpr SQLInsert::RunForm kQuery{ConnOp::kQuery, true, true};
constexpr SQLInsert::RunForm kReturning{ConnOp::kReturning, false, false};

}  // namespace

std::string PGInsert::tosql() const { return upsert_text(); }
bool PGInsert::Execute() { return run(kExecute, VEXEL_SITE); }
bool PGInsert::ExecuteQuery() { return run(kQuery, VEXEL_SITE); }
bool PGInsert::ExecuteReturning() { return run(kReturning, VEXEL_SITE); }

}  // namespace vexel
