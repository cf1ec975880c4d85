#include "sqlserver/SQLServerSystemInfo.h"

namespace vexel {

bool CSQLServerSystemInfo::IsExistsInDB(const std::string&, const std::string&, bool&) {
  return has_conn(VEXEL_SITE) && not_supported(VEXEL_SITE);
}

bool CSQLServerSystemInfo::SequenceReset() {
  return has_conn(VEXEL_SITE) && not_supported(VEXEL_SITE);
}

bool CSQLServerSystemInfo::GetAllTablesBySchema(const std::string&, std::vector<std::string>&) {
  return has_conn(VEXEL_SITE) && not_supported(VEXEL_SITE);
}

bool CSQLServerSystemInfo::GetAllChiledTableByParentTable(const std::string&,
                                                          std::vector<std::string>&) {
  return has_conn(VEXEL_SITE) && not_supported(VEXEL_SITE);
}

bool CSQLServerSystemInfo::GetAllSchemaName(std::vector<std::string>&) {
  return has_conn(VEXEL_SITE) && not_supported(VEXEL_SITE);
}

}  // namespace vexel
