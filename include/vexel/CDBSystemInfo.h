/// \file
/// Questions about the database catalogue (schemas, tables, inherited
/// tables, whether a table exists) and the repair of sequences after bulk
/// loads, answered through the host's connection.
///
/// \code
/// vexel::CDBSystemInfo info(conn);
/// std::vector<std::string> tables;
/// if (info.GetAllTablesBySchema("shop", tables)) { ... }
/// \endcode
///
/// Every operation returns true when its catalogue queries ran; output
/// vectors are appended to, never cleared, and keep what was appended before
/// a failure. SQL Server has no catalogue support: its operations log and
/// return false.
#ifndef VEXEL_CDBSYSTEMINFO_H
#define VEXEL_CDBSYSTEMINFO_H

#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/export.h"

namespace vexel {

class CDBSystemInfoImp;

/// Questions about the database itself, asked through the connection's
/// cursor: schemas, tables, child tables, whether a table exists, and
/// resetting sequences. See docs/dialect-notes.md for what each engine answers.
class VEXEL_API CDBSystemInfo {
 public:
  /// An empty connection is logged and leaves the object without an
  /// implementation: every later call logs and returns false.
  explicit CDBSystemInfo(const std::shared_ptr<tessel::CConnect>& conn);
  ///@{
  /// Copies and moves share the implementation.
  CDBSystemInfo(const CDBSystemInfo& other);
  CDBSystemInfo(CDBSystemInfo&& other) noexcept;
  CDBSystemInfo& operator=(const CDBSystemInfo& other);
  CDBSystemInfo& operator=(CDBSystemInfo&& other) noexcept;
  ///@}
  ~CDBSystemInfo();

  /// Sets `exists` to whether `schema`.`table` is an ordinary table.
  bool IsExistsInDB(const std::string& schema, const std::string& table, bool& exists);
  /// Sets each sequence behind a column default past the column's maximum.
  bool SequenceReset();
  /// Appends the names of the ordinary tables of `schema` to `tables`.
  bool GetAllTablesBySchema(const std::string& schema, std::vector<std::string>& tables);
  /// Tables inheriting from `parent`, given as "schema.table".
  bool GetAllChiledTableByParentTable(const std::string& parent,
                                      std::vector<std::string>& children);
  /// Appends the schema names to `schemas` (not on SQLite: logged, false).
  bool GetAllSchemaName(std::vector<std::string>& schemas);

 private:
  std::shared_ptr<CDBSystemInfoImp> dbsystem_info_ptr_;
};

}  // namespace vexel

#endif  // VEXEL_CDBSYSTEMINFO_H
