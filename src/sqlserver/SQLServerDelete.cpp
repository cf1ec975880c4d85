#include "sqlserver/SQLServerDelete.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

// Hosts read the removed rows under the "deleted." prefix.
constexpr SQLDelete::Form kForm{false, "deleted.", false};

}  // namespace

std::string SQLServerDelete::tosql() const { return render(kForm); }
bool SQLServerDelete::Execute() { return run(kForm, ConnOp::kUpdate, VEXEL_SITE); }
bool SQLServerDelete::ExecuteQuery() { return run(kForm, ConnOp::kQuery, VEXEL_SITE); }
bool SQLServerDelete::ExecuteReturning() { return run(kForm, ConnOp::kReturning, VEXEL_SITE); }

}  // namespace vexel
