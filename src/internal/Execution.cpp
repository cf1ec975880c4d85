#include "internal/Execution.h"

#include "internal/Text.h"

#include "internal/Log.h"

namespace vexel {
namespace internal {
namespace {

bool call(tessel::CConnect& conn, const ExecRequest& request, const std::string& sql) {
  switch (request.op) {
    case ConnOp::kUpdate:
      return conn.ExecuteUpdate(sql);
    case ConnOp::kQuery:
      return conn.ExecuteQuery(sql);
    case ConnOp::kQueryUDT:
      return conn.ExecuteQueryUDT(sql, request.time_out);
    case ConnOp::kSortByCollate:
      return conn.ExecuteSortByCollate(sql, request.collate_name);
    case ConnOp::kLoop:
      return conn.ExecuteLoop(sql);
    case ConnOp::kContainView:
      return conn.ExecuteQueryContainView(sql);
    case ConnOp::kReturning:
      return conn.ExecuteReturning(sql);
    case ConnOp::kSeqence:
      return conn.SeqenceExecute(sql);
    case ConnOp::kSeqenceManual:
      return conn.SeqenceExecuteManual(sql);
  }
  return false;
}

void log_failure(const ExecRequest& request, int code, const std::string& info,
                 const std::string& sql) {
  const Site& site = request.site;
  const char* text = info.c_str();
  const char* statement = sql.c_str();
  switch (request.failure) {
    case Failure::kExecuteQuery:
      VEXEL_LOG_AT(site, 5, "[%s]ExecuteQuery failed errorcode:%d.error_info:%s,sql:%s.[%s(%d)]",
                   code, text, statement);
      return;
    case Failure::kExecute:
      VEXEL_LOG_AT(site, 5, "[%s]Execute failed errorcode:%d.error_info:%s,sql:%s.[%s(%d)]", code,
                   text, statement);
      return;
    case Failure::kTimeOut:
      VEXEL_LOG_AT(site, 5,
                   "[%s]ExecuteQueryUDT failed,time_out:%d, "
                   "errorcode:%d.error_info:%s,sql:%s.[%s(%d)]",
                   request.time_out, code, text, statement);
      return;
    case Failure::kCollate:
      VEXEL_LOG_AT(site, 5,
                   "[%s]ExecuteQueryUDT failed,collate_name:%s, "
                   "errorcode:%d.error_info:%s,sql:%s.[%s(%d)]",
                   request.collate_name.c_str(), code, text, statement);
      return;
    case Failure::kLoop:
      VEXEL_LOG_AT(site, 5, "[%s]ExecuteQueryUDT failed,errorcode:%d.error_info:%s,sql:%s.[%s(%d)]",
                   code, text, statement);
      return;
    case Failure::kSeqence:
      VEXEL_LOG_AT(site, 5, "[%s]SeqenceExecute failed errorcode:%d.error_info:%s,sql:%s.[%s(%d)]",
                   code, text, statement);
      return;
    case Failure::kSeqenceManual:
      VEXEL_LOG_AT(site, 5,
                   "[%s]SeqenceExecuteManual failed errorcode:%d.error_info:%s,sql:%s.[%s(%d)]",
                   code, text, statement);
      return;
  }
}

}  // namespace

bool Run(tessel::CConnect& conn, const ExecRequest& request, const std::string& sql) {
  // A statement that holds a refused value is not run; its reason is
  // logged instead.
  std::string why;
  if (find_refused_value(sql, why)) {
    VEXEL_LOG_AT(request.site, 5, "[%s]value refused: %s.[%s(%d)]", why.c_str());
    return false;
  }
  if (call(conn, request, sql)) return true;
  std::string info;
  const int code = request.query_error ? conn.GetLastQueryError(info) : conn.GetLastError(info);
  log_failure(request, code, info, sql);
  return false;
}

bool Execute(const std::shared_ptr<tessel::CConnect>& conn, const ExecRequest& request,
             const std::function<std::string()>& render) {
  if (!conn) {
    VEXEL_LOG_AT(request.site, 5, "[%s]db_conn_ is nullptr.[%s(%d)]");
    return false;
  }
  return Run(*conn, request, render());
}

bool ExecuteQuery(const std::shared_ptr<tessel::CConnect>& conn, const QueryRoutes& routes,
                  QueryVariant variant, const Site& site, int time_out,
                  const std::string& collate_name, const std::function<std::string()>& render) {
  ExecRequest request;
  request.site = site;
  bool semicolon = false;
  switch (variant) {
    case QueryVariant::kPlain:
      request.op = ConnOp::kQuery;
      semicolon = routes.semicolon;
      break;
    case QueryVariant::kContainView:
      request.op = ConnOp::kContainView;
      semicolon = routes.semicolon;
      break;
    case QueryVariant::kTimeOut:
      request.op = routes.time_out_op;
      request.failure = Failure::kTimeOut;
      request.time_out = time_out;
      break;
    case QueryVariant::kCollate:
      request.op = routes.collate_op;
      request.failure = Failure::kCollate;
      request.collate_name = collate_name;
      break;
    case QueryVariant::kLoop:
      request.op = routes.loop_op;
      request.failure = Failure::kLoop;
      break;
  }
  return Execute(conn, request, [&] {
    std::string sql = render();
    if (semicolon) sql += ";";
    return sql;
  });
}

}  // namespace internal
}  // namespace vexel
