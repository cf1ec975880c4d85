// SQL Server has no catalogue support: every operation logs and answers
// false.
#ifndef VEXEL_SQLSERVERSYSTEMINFO_H
#define VEXEL_SQLSERVERSYSTEMINFO_H

#include <memory>
#include <string>
#include <vector>

#include "CDBSystemInfoImp.h"

namespace vexel {

class CSQLServerSystemInfo final : public CDBSystemInfoImp {
 public:
  explicit CSQLServerSystemInfo(std::shared_ptr<tessel::CConnect> conn)
      : CDBSystemInfoImp(std::move(conn)) {}

  bool IsExistsInDB(const std::string& schema, const std::string& table, bool& exists) override;
  bool SequenceReset() override;
  bool GetAllTablesBySchema(const std::string& schema, std::vector<std::string>& tables) override;
  bool GetAllChiledTableByParentTable(const std::string& parent,
                                      std::vector<std::string>& children) override;
  bool GetAllSchemaName(std::vector<std::string>& schemas) override;
};

}  // namespace vexel

#endif  // VEXEL_SQLSERVERSYSTEMINFO_H
