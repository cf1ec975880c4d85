#include "internal/StrictWhere.h"

#include <atomic>

#include "vexel/StrictWhere.h"

namespace vexel {
namespace {

std::atomic<bool>& process_strict() {
  static std::atomic<bool> strict{false};
  return strict;
}

}  // namespace

bool set_strict_where_default(bool strict) { return process_strict().exchange(strict); }

bool strict_where_default() { return process_strict().load(); }

namespace internal {

void warn_if_unfiltered(const std::string& condition, const Site& site) {
  if (!condition.empty()) return;
  VEXEL_LOG_AT(site, 4, "[%s]condition renders empty, the statement changes every row.[%s(%d)]");
}

bool refuse_unfiltered(bool builder_strict, bool renders_empty, const Site& site) {
  if (!renders_empty || !(builder_strict || strict_where_default())) return false;
  VEXEL_LOG_AT(site, 5, "[%s]condition renders empty, the statement is refused.[%s(%d)]");
  return true;
}

}  // namespace internal
}  // namespace vexel
