#include "sqlite/SQLiteDelete.h"

namespace vexel {
namespace {

using ConnOp = internal::ConnOp;

// The schema qualifier is dropped from the table name.
constexpr SQLDelete::Form kForm{true, nullptr, true};

}  // namespace

std::string SQLiteDelete::tosql() const { return render(kForm); }
bool SQLiteDelete::Execute() { return run(kForm, ConnOp::kUpdate, VEXEL_SITE); }
bool SQLiteDelete::ExecuteQuery() { return run(kForm, ConnOp::kQuery, VEXEL_SITE); }
bool SQLiteDelete::ExecuteReturning() { return run(kForm, ConnOp::kReturning, VEXEL_SITE); }

}  // namespace vexel
