// PostgreSQL catalogue: pg_tables, pg_namespace and pg_inherits, and the
// reset of every sequence named in a nextval column default.
#ifndef VEXEL_PGSYSTEMINFO_H
#define VEXEL_PGSYSTEMINFO_H

#include <memory>
#include <string>
#include <vector>

#include "CDBSystemInfoImp.h"

namespace vexel {

class CPGSystemInfo final : public CDBSystemInfoImp {
 public:
  explicit CPGSystemInfo(std::shared_ptr<tessel::CConnect> conn)
      : CDBSystemInfoImp(std::move(conn)) {}

  bool IsExistsInDB(const std::string& schema, const std::string& table, bool& exists) override;
  bool SequenceReset() override;
  bool GetAllTablesBySchema(const std::string& schema, std::vector<std::string>& tables) override;
  bool GetAllChiledTableByParentTable(const std::string& parent,
                                      std::vector<std::string>& children) override;
  bool GetAllSchemaName(std::vector<std::string>& schemas) override;

 private:
  // `tab_name` ("schema.table" as the sequence query writes it) as a
  // quoted table reference; `schemas` are the schemas the query searched.
  std::string table_reference(const std::string& tab_name, const std::vector<std::string>& schemas);
  // Sets `seq_name` so that its next value is the maximum of `column` in
  // `table` plus 1 (or 0 for an empty column), and logs the outcome.
  // `table` and `column` are references ready for the statement.
  bool SetMapSeqValue(const std::string& table, const std::string& column,
                      const std::string& seq_name);
};

}  // namespace vexel

#endif  // VEXEL_PGSYSTEMINFO_H
