// The catalogue's implementation base: holds the connection and the steps
// every dialect shares (connection check, running a catalogue query and
// reading one column of its rows). Dialect classes supply the texts.
#ifndef VEXEL_CDBSYSTEMINFOIMP_H
#define VEXEL_CDBSYSTEMINFOIMP_H

#include <memory>
#include <string>
#include <vector>

#include "internal/Log.h"
#include "tessel/CConnect.h"

namespace vexel {

class CDBSystemInfoImp {
 public:
  explicit CDBSystemInfoImp(std::shared_ptr<tessel::CConnect> conn) : db_conn_(std::move(conn)) {}
  virtual ~CDBSystemInfoImp();
  CDBSystemInfoImp(const CDBSystemInfoImp&) = delete;
  CDBSystemInfoImp& operator=(const CDBSystemInfoImp&) = delete;

  virtual bool IsExistsInDB(const std::string& schema, const std::string& table, bool& exists) = 0;
  virtual bool SequenceReset() = 0;
  virtual bool GetAllTablesBySchema(const std::string& schema,
                                    std::vector<std::string>& tables) = 0;
  virtual bool GetAllChiledTableByParentTable(const std::string& parent,
                                              std::vector<std::string>& children) = 0;
  virtual bool GetAllSchemaName(std::vector<std::string>& schemas) = 0;

 protected:
  // Logs "db_conn_ is nullptr" on behalf of `site` when there is no
  // connection.
  bool has_conn(const internal::Site& site) const;
  // Runs `sql` as a query; a failure is logged with the ExecuteQuery line.
  bool query(const internal::Site& site, const std::string& sql) const;
  // Runs `sql` as a data-change statement; a failure is logged with the
  // Execute line.
  bool update(const internal::Site& site, const std::string& sql) const;
  // Runs `sql` and appends `column` of every row to `out`.
  bool read_column(const internal::Site& site, const std::string& sql, const char* column,
                   std::vector<std::string>& out) const;
  // Runs `sql` and sets `exists` to whether the first row's `column` is
  // not empty.
  bool read_exists(const internal::Site& site, const std::string& sql, const char* column,
                   bool& exists) const;
  // Logs the unsupported-operation line and answers false.
  static bool not_supported(const internal::Site& site);

  std::shared_ptr<tessel::CConnect> db_conn_;
};

// The implementation for a dialect: SQLite for 1, SQL Server for 3,
// PostgreSQL for 2 and every other value.
std::shared_ptr<CDBSystemInfoImp> make_system_info(tessel::DBTYPE db_type,
                                                   const std::shared_ptr<tessel::CConnect>& conn);

}  // namespace vexel

#endif  // VEXEL_CDBSYSTEMINFOIMP_H
