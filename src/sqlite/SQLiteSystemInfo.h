// SQLite catalogue: sqlite_master of a (possibly attached) database, and
// the reset of sqlite_sequence to each table's key maximum.
#ifndef VEXEL_SQLITESYSTEMINFO_H
#define VEXEL_SQLITESYSTEMINFO_H

#include <memory>
#include <string>
#include <vector>

#include "CDBSystemInfoImp.h"

namespace vexel {

class CSQLiteSystemInfo final : public CDBSystemInfoImp {
 public:
  explicit CSQLiteSystemInfo(std::shared_ptr<tessel::CConnect> conn)
      : CDBSystemInfoImp(std::move(conn)) {}

  bool IsExistsInDB(const std::string& schema, const std::string& table, bool& exists) override;
  bool SequenceReset() override;
  bool GetAllTablesBySchema(const std::string& schema, std::vector<std::string>& tables) override;
  // Not available on SQLite: logged and false.
  bool GetAllChiledTableByParentTable(const std::string& parent,
                                      std::vector<std::string>& children) override;
  bool GetAllSchemaName(std::vector<std::string>& schemas) override;
};

}  // namespace vexel

#endif  // VEXEL_SQLITESYSTEMINFO_H
