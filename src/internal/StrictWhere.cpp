#include "internal/StrictWhere.h"

#include <atomic>
#include <utility>

#include "internal/ExprTree.h"
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

namespace {

void warn_if_empty(const std::string& condition, const Site& site) {
  if (condition.empty()) {
    VEXEL_LOG_AT(site, 4, "[%s]condition renders empty, the statement changes every row.[%s(%d)]");
  }
}

}  // namespace

std::string where_text(const CommonExpr& condition, tessel::DBTYPE db, const Site& site) {
  std::string text = condition.GetExpr(db);
  warn_if_empty(text, site);
  return text;
}

void where_text(Ptr_CommonExpr&& condition, tessel::DBTYPE db, const Site& site, std::string& out) {
  if (!ExprTree::take(condition, out)) {
    out = where_text(std::as_const(condition), db, site);
    return;
  }
  warn_if_empty(out, site);
}

bool refuse_unfiltered(bool builder_strict, bool renders_empty, const Site& site) {
  if (!renders_empty || !(builder_strict || strict_where_default())) return false;
  VEXEL_LOG_AT(site, 5, "[%s]condition renders empty, the statement is refused.[%s(%d)]");
  return true;
}

}  // namespace internal
}  // namespace vexel
