#include "CDBSystemInfoImp.h"

#include "internal/Execution.h"
#include "internal/Facade.h"
#include "internal/Text.h"
#include "postgres/PGSystemInfo.h"
#include "sqlite/SQLiteSystemInfo.h"
#include "sqlserver/SQLServerSystemInfo.h"

namespace vexel {

CDBSystemInfoImp::~CDBSystemInfoImp() = default;

bool CDBSystemInfoImp::has_conn(const internal::Site& site) const {
  if (db_conn_) return true;
  VEXEL_LOG_AT(site, 5, "[%s]db_conn_ is nullptr.[%s(%d)]");
  return false;
}

bool CDBSystemInfoImp::query(const internal::Site& site, const std::string& sql) const {
  internal::ExecRequest request;
  request.site = site;
  request.op = internal::ConnOp::kQuery;
  request.failure = internal::Failure::kExecuteQuery;
  return internal::Run(*db_conn_, request, sql);
}

bool CDBSystemInfoImp::update(const internal::Site& site, const std::string& sql) const {
  internal::ExecRequest request;
  request.site = site;
  request.op = internal::ConnOp::kUpdate;
  request.failure = internal::Failure::kExecute;
  return internal::Run(*db_conn_, request, sql);
}

bool CDBSystemInfoImp::read_column(const internal::Site& site, const std::string& sql,
                                   const char* column, std::vector<std::string>& out) const {
  if (!query(site, sql)) return false;
  for (; !db_conn_->IsEOF(); db_conn_->MoveNext()) out.push_back(db_conn_->GetFieldString(column));
  return true;
}

bool CDBSystemInfoImp::read_exists(const internal::Site& site, const std::string& sql,
                                   const char* column, bool& exists) const {
  if (!query(site, sql)) return false;
  exists = !db_conn_->IsEOF() && !db_conn_->GetFieldString(column).empty();
  return true;
}

bool CDBSystemInfoImp::not_supported(const internal::Site& site) {
  // No full stop before the bracket, unlike every other line: hosts match
  // this exact text, also from the SQLite implementation.
  VEXEL_LOG_AT(site, 5, "[%s]Not support SQLServer![%s(%d)]");
  return false;
}

std::shared_ptr<CDBSystemInfoImp> make_system_info(tessel::DBTYPE db_type,
                                                   const std::shared_ptr<tessel::CConnect>& conn) {
  return internal::make_dialect<CPGSystemInfo, CSQLiteSystemInfo, CSQLServerSystemInfo,
                                CDBSystemInfoImp>(db_type, conn);
}

}  // namespace vexel
