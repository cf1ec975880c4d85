#include "postgres/PGQuery.h"

namespace vexel {
namespace {

constexpr SQLQuery::SelectForm kSelect{true, false, false};
constexpr SQLQuery::ExecForm kExec = internal::DedicatedRoutes(true);

}  // namespace

std::string PGQuery::tosql() const { return render(kSelect); }
bool PGQuery::Execute() { return run(kExec, Variant::kPlain, VEXEL_SITE); }
bool PGQuery::ExecuteQueryContainView() { return run(kExec, Variant::kContainView, VEXEL_SITE); }
bool PGQuery::ExecuteQueryUDT(const int& time_out) {
  return run(kExec, Variant::kTimeOut, VEXEL_SITE, time_out);
}
bool PGQuery::ExecuteSortByCollate(const std::string& collate_name) {
  return run(kExec, Variant::kCollate, VEXEL_SITE, 0, collate_name);
}
bool PGQuery::ExecuteLoop() { return run(kExec, Variant::kLoop, VEXEL_SITE); }

}  // namespace vexel
