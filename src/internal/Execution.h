// Execution shared by every execute operation of every implementation:
// check the connection, render, call the connection, and on failure read
// its last error once and write one log line.
#ifndef VEXEL_INTERNAL_EXECUTION_H
#define VEXEL_INTERNAL_EXECUTION_H

#include <functional>
#include <memory>
#include <string>

#include "internal/Log.h"
#include "tessel/CConnect.h"

namespace vexel {
namespace internal {

// The connection operation a statement is passed to.
enum class ConnOp {
  kUpdate,
  kQuery,
  kQueryUDT,
  kSortByCollate,
  kLoop,
  kContainView,
  kReturning,
  kSeqence,
  kSeqenceManual,
};

// The log line written when the connection reports failure. The texts are
// kept exactly as hosts parse them, including the "ExecuteQueryUDT" wording
// of the collation and loop forms.
enum class Failure {
  kExecuteQuery,   // "[%s]ExecuteQuery failed errorcode:..."
  kExecute,        // "[%s]Execute failed errorcode:..."
  kTimeOut,        // "[%s]ExecuteQueryUDT failed,time_out:%d, ..."
  kCollate,        // "[%s]ExecuteQueryUDT failed,collate_name:%s, ..."
  kLoop,           // "[%s]ExecuteQueryUDT failed,errorcode:..."
  kSeqence,        // "[%s]SeqenceExecute failed errorcode:..."
  kSeqenceManual,  // "[%s]SeqenceExecuteManual failed errorcode:..."
};

struct ExecRequest {
  Site site;  // the reporting operation, named in the log line
  ConnOp op = ConnOp::kQuery;
  Failure failure = Failure::kExecuteQuery;
  int time_out = 0;
  std::string collate_name;
  // Read GetLastQueryError instead of GetLastError after a failure.
  bool query_error = false;
};

// Where a query's execution forms go on one dialect's connection.
struct QueryRoutes {
  bool semicolon;  // ";" after the plain and view-aware forms
  ConnOp time_out_op;
  ConnOp collate_op;
  ConnOp loop_op;
};

// The PostgreSQL connection offers a dedicated operation for each form.
constexpr QueryRoutes DedicatedRoutes(bool semicolon) {
  return {semicolon, ConnOp::kQueryUDT, ConnOp::kSortByCollate, ConnOp::kLoop};
}
// Elsewhere every form runs as a plain query; the time-out and collation
// are only logged.
constexpr QueryRoutes PlainRoutes(bool semicolon) {
  return {semicolon, ConnOp::kQuery, ConnOp::kQuery, ConnOp::kQuery};
}

enum class QueryVariant { kPlain, kContainView, kTimeOut, kCollate, kLoop };

// Runs a query statement in one of its execution forms: the connection
// operation, the ";" and the failure line follow from `routes` and
// `variant`; `site` names the reporting operation.
bool ExecuteQuery(const std::shared_ptr<tessel::CConnect>& conn, const QueryRoutes& routes,
                  QueryVariant variant, const Site& site, int time_out,
                  const std::string& collate_name, const std::function<std::string()>& render);

// Logs "db_conn_ is nullptr" and returns false when `conn` is empty (without
// rendering); otherwise renders and runs the statement.
bool Execute(const std::shared_ptr<tessel::CConnect>& conn, const ExecRequest& request,
             const std::function<std::string()>& render);

// Runs an already rendered text on a present connection.
bool Run(tessel::CConnect& conn, const ExecRequest& request, const std::string& sql);

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_EXECUTION_H
