#include "sqlite/SQLiteWith.h"

namespace vexel {
namespace {

// No ";" is appended to a WITH statement in any dialect.
constexpr internal::QueryRoutes kRoutes = internal::PlainRoutes(false);

}  // namespace

bool SQLiteWith::Execute() { return run(kRoutes, internal::QueryVariant::kPlain, VEXEL_SITE); }
bool SQLiteWith::ExecuteQueryUDT(const int& time_out) {
  return run(kRoutes, internal::QueryVariant::kTimeOut, VEXEL_SITE, time_out);
}
bool SQLiteWith::ExecuteSortByCollate(const std::string& collate_name) {
  return run(kRoutes, internal::QueryVariant::kCollate, VEXEL_SITE, 0, collate_name);
}
bool SQLiteWith::ExecuteLoop() { return run(kRoutes, internal::QueryVariant::kLoop, VEXEL_SITE); }

}  // namespace vexel
