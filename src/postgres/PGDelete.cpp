#include "postgres/PGDelete.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

constexpr SQLDelete::Form kForm{false, nullptr, true};

}  // namespace

std::string PGDelete::tosql() const { return render(kForm); }
bool PGDelete::Execute() { return run(kForm, ConnOp::kUpdate, VEXEL_SITE); }
bool PGDelete::ExecuteQuery() { return run(kForm, ConnOp::kQuery, VEXEL_SITE); }
bool PGDelete::ExecuteReturning() { return run(kForm, ConnOp::kReturning, VEXEL_SITE); }

}  // namespace vexel
