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

// Logs "db_conn_ is nullptr" and returns false when `conn` is empty (without
// rendering); otherwise renders and runs the statement.
bool Execute(const std::shared_ptr<tessel::CConnect>& conn, const ExecRequest& request,
             const std::function<std::string()>& render);

// Runs an already rendered text on a present connection.
bool Run(tessel::CConnect& conn, const ExecRequest& request, const std::string& sql);

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_EXECUTION_H
