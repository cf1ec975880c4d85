#include "tessel/Transaction.h"

#include "common/HostLog.h"

namespace tessel {

Transaction::Transaction(RowsConnect& conn) : conn_(conn) {
  conn_.clear_result();  // a loop being read may hold a transaction of its own
  depth_ = conn_.open_guards_ + 1;
  if (conn_.InTransaction()) savepoint_ = "tessel_guard_" + std::to_string(depth_);
  active_ = run("tessel::Transaction::Transaction",
                savepoint_.empty() ? "BEGIN" : "SAVEPOINT " + savepoint_);
  if (active_) conn_.open_guards_ = depth_;
}

Transaction::~Transaction() {
  if (active_) Rollback();
}

bool Transaction::Commit() {
  if (!active_ || depth_ != conn_.open_guards_) {
    host::LogLine(5, "tessel::Transaction::Commit", __FILE__, __LINE__,
                  active_ ? "a guard made after this one is still open" : "the guard has ended");
    return false;
  }
  if (!run("tessel::Transaction::Commit",
           savepoint_.empty() ? "COMMIT" : "RELEASE SAVEPOINT " + savepoint_)) {
    return false;  // still active: the destructor rolls back what is left
  }
  active_ = false;
  conn_.open_guards_ = depth_ - 1;
  return true;
}

bool Transaction::Rollback() {
  if (!active_) {
    host::LogLine(5, "tessel::Transaction::Rollback", __FILE__, __LINE__, "the guard has ended");
    return false;
  }
  active_ = false;
  conn_.open_guards_ = depth_ - 1;
  // The engine may have ended the transaction itself (a failed COMMIT on
  // PostgreSQL): then nothing is left to undo.
  if (savepoint_.empty() && !conn_.InTransaction()) return true;
  return run("tessel::Transaction::Rollback",
             savepoint_.empty()
                 ? "ROLLBACK"
                 : "ROLLBACK TO SAVEPOINT " + savepoint_ + "; RELEASE SAVEPOINT " + savepoint_);
}

bool Transaction::run(const char* function, const std::string& sql) {
  if (conn_.ExecuteUpdate(sql)) return true;
  std::string error;
  const int code = conn_.GetLastError(error);
  host::LogLine(5, function, __FILE__, __LINE__,
                sql + " failed errorcode:" + std::to_string(code) + " error_info:" + error);
  return false;
}

}  // namespace tessel
