#include "vexel/CDBSystemInfo.h"

#include "CDBSystemInfoImp.h"
#include "internal/Log.h"

namespace vexel {
namespace {

// A facade without implementation (no connection, or moved from) logs under
// the operation's own name and answers false.
bool no_implementation(const internal::Site& site) {
  VEXEL_LOG_AT(site, 5, "[%s]dbsystem_info_ptr_ is nullptr.[%s(%d)]");
  return false;
}

}  // namespace

CDBSystemInfo::CDBSystemInfo(const std::shared_ptr<tessel::CConnect>& conn) {
  if (!conn) {
    VEXEL_LOG(6, "[%s]db_conn is nullptr.[%s(%d)]");
    return;
  }
  const tessel::DBTYPE db_type = conn->GetDBType();
  VEXEL_LOG(3, "[%s]db_type:%d.[%s(%d)]", static_cast<int>(db_type));
  dbsystem_info_ptr_ = make_system_info(db_type, conn);
}

CDBSystemInfo::CDBSystemInfo(const CDBSystemInfo& other) = default;
CDBSystemInfo::CDBSystemInfo(CDBSystemInfo&& other) noexcept = default;
CDBSystemInfo& CDBSystemInfo::operator=(const CDBSystemInfo& other) = default;
CDBSystemInfo& CDBSystemInfo::operator=(CDBSystemInfo&& other) noexcept = default;
CDBSystemInfo::~CDBSystemInfo() = default;

bool CDBSystemInfo::IsExistsInDB(const std::string& schema, const std::string& table,
                                 bool& exists) {
  return dbsystem_info_ptr_ ? dbsystem_info_ptr_->IsExistsInDB(schema, table, exists)
                            : no_implementation(VEXEL_SITE);
}

bool CDBSystemInfo::SequenceReset() {
  return dbsystem_info_ptr_ ? dbsystem_info_ptr_->SequenceReset() : no_implementation(VEXEL_SITE);
}

bool CDBSystemInfo::GetAllTablesBySchema(const std::string& schema,
                                         std::vector<std::string>& tables) {
  return dbsystem_info_ptr_ ? dbsystem_info_ptr_->GetAllTablesBySchema(schema, tables)
                            : no_implementation(VEXEL_SITE);
}

bool CDBSystemInfo::GetAllChiledTableByParentTable(const std::string& parent,
                                                   std::vector<std::string>& children) {
  return dbsystem_info_ptr_ ? dbsystem_info_ptr_->GetAllChiledTableByParentTable(parent, children)
                            : no_implementation(VEXEL_SITE);
}

bool CDBSystemInfo::GetAllSchemaName(std::vector<std::string>& schemas) {
  return dbsystem_info_ptr_ ? dbsystem_info_ptr_->GetAllSchemaName(schemas)
                            : no_implementation(VEXEL_SITE);
}

}  // namespace vexel
