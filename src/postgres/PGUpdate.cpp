#include "postgres/PGUpdate.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

// Multi-table conditions are joined by a bare ",": hosts send one condition.
constexpr SQLUpdate::Form kForm{SQLUpdate::Vacuum::kStatements, false,
                                SQLUpdate::Batch::kJoinValues, ",", nullptr};

}  // namespace

std::string PGUpdate::tosql() const { return render(kForm); }
bool PGUpdate::Execute() { return run(kForm, ConnOp::kUpdate, VEXEL_SITE); }
bool PGUpdate::ExecuteQuery() { return run(kForm, ConnOp::kQuery, VEXEL_SITE); }
bool PGUpdate::ExecuteReturning() { return run(kForm, ConnOp::kReturning, VEXEL_SITE); }

}  // namespace vexel
