#include "sqlserver/SQLServerUpdate.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

// No VACUUM, short form, multi-table or batch piece here.
constexpr SQLUpdate::Form kForm{SQLUpdate::Vacuum::kIgnored, false, SQLUpdate::Batch::kIgnored, "",
                                "inserted."};

}  // namespace

std::string SQLServerUpdate::tosql() const { return render(kForm); }
bool SQLServerUpdate::Execute() { return run(kForm, ConnOp::kUpdate, VEXEL_SITE); }
bool SQLServerUpdate::ExecuteQuery() { return run(kForm, ConnOp::kQuery, VEXEL_SITE); }
bool SQLServerUpdate::ExecuteReturning() { return run(kForm, ConnOp::kReturning, VEXEL_SITE); }

}  // namespace vexel
