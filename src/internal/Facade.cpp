#include "internal/Facade.h"

namespace vexel {
namespace internal {

tessel::DBTYPE dialect_or_log(const std::shared_ptr<tessel::CConnect>& conn, const Site& site) {
  if (!conn) VEXEL_LOG_AT(site, 6, "[%s]db_conn is nullptr.[%s(%d)]");
  return dialect_of(conn);
}

void log_no_implementation(const Site& site) {
  VEXEL_LOG_AT(site, 5, "[%s]ptr_builder_ is nullptr.[%s(%d)]");
}

}  // namespace internal
}  // namespace vexel
