#include "sqlite/SQLiteUpdate.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

constexpr SQLUpdate::Form kForm{SQLUpdate::Vacuum::kEmpty, true, SQLUpdate::Batch::kCase, " AND ",
                                nullptr};

}  // namespace

std::string SQLiteUpdate::tosql() const { return render(kForm); }
bool SQLiteUpdate::Execute() { return run(kForm, ConnOp::kUpdate, VEXEL_SITE); }
bool SQLiteUpdate::ExecuteQuery() { return run(kForm, ConnOp::kQuery, VEXEL_SITE); }
bool SQLiteUpdate::ExecuteReturning() { return run(kForm, ConnOp::kReturning, VEXEL_SITE); }

}  // namespace vexel
