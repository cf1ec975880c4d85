#include "sqlserver/SQLServerQuery.h"

namespace vexel {
namespace {

constexpr SQLQuery::SelectForm kSelect{false, true, true};
constexpr SQLQuery::ExecForm kExec = internal::PlainRoutes(false);

}  // namespace

std::string SQLServerQuery::tosql() const { return render(kSelect); }
bool SQLServerQuery::Execute() { return run(kExec, Variant::kPlain, VEXEL_SITE); }
bool SQLServerQuery::ExecuteQueryContainView() {
  return run(kExec, Variant::kContainView, VEXEL_SITE);
}
bool SQLServerQuery::ExecuteQueryUDT(const int& time_out) {
  return run(kExec, Variant::kTimeOut, VEXEL_SITE, time_out);
}
bool SQLServerQuery::ExecuteSortByCollate(const std::string& collate_name) {
  return run(kExec, Variant::kCollate, VEXEL_SITE, 0, collate_name);
}
bool SQLServerQuery::ExecuteLoop() { return run(kExec, Variant::kLoop, VEXEL_SITE); }

}  // namespace vexel
