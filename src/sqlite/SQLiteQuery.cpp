#include "sqlite/SQLiteQuery.h"

namespace vexel {
namespace {

constexpr SQLQuery::SelectForm kSelect{true, false, false};
constexpr SQLQuery::ExecForm kExec = internal::PlainRoutes(true);

}  // namespace

std::string SQLiteQuery::tosql() const { return render(kSelect); }
bool SQLiteQuery::Execute() { return run(kExec, Variant::kPlain, VEXEL_SITE); }
bool SQLiteQuery::ExecuteQueryContainView() {
  return run(kExec, Variant::kContainView, VEXEL_SITE);
}
bool SQLiteQuery::ExecuteQueryUDT(const int& time_out) {
  return run(kExec, Variant::kTimeOut, VEXEL_SITE, time_out);
}
bool SQLiteQuery::ExecuteSortByCollate(const std::string& collate_name) {
  return run(kExec, Variant::kCollate, VEXEL_SITE, 0, collate_name);
}
bool SQLiteQuery::ExecuteLoop() { return run(kExec, Variant::kLoop, VEXEL_SITE); }

}  // namespace vexel
