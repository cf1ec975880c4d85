// A recording connection for unit tests: any dialect code, failure per
// operation, queued result sets for the cursor, and a log of every call.
#ifndef VEXEL_TESTS_FAKECONNECT_H
#define VEXEL_TESTS_FAKECONNECT_H

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tessel/CConnect.h"

namespace vexel_test {

struct FakeCall {
  std::string op;     // operation name, e.g. "ExecuteQuery"
  std::string sql;    // statement text, "" for cursor and error calls
  std::string extra;  // time-out or collation name, where the call has one
};

// One row: (column name, value) in column order.
using FakeRow = std::vector<std::pair<std::string, std::string>>;
using FakeResult = std::vector<FakeRow>;

class FakeConnect : public tessel::CConnect {
 public:
  explicit FakeConnect(int db_type = 2);

  // Makes `op` ("ExecuteQuery", "ExecuteUpdate", ...) return false; the
  // next GetLastError / GetLastQueryError then reports `code` and `info`.
  void FailOn(const std::string& op, int code = 42, const std::string& info = "boom");
  void Succeed(const std::string& op) { failing_.erase(op); }
  // Result sets handed out, one per successful execute call, in order.
  void QueueResult(FakeResult rows) { queued_.push_back(std::move(rows)); }
  void set_db_type(int db_type) { db_type_ = db_type; }

  const std::vector<FakeCall>& calls() const { return calls_; }
  // Calls of one operation.
  std::vector<FakeCall> calls_of(const std::string& op) const;
  int count(const std::string& op) const;
  // Operations that run statements, in call order, as "Op:sql".
  std::vector<std::string> statements() const;
  void clear() { calls_.clear(); }

  bool ExecuteUpdate(const std::string& sql) override;
  bool ExecuteQuery(const std::string& sql) override;
  int GetLastError(std::string& error_info) override;
  bool MoveNext() override;
  bool IsEOF() override;
  std::string GetFieldString(const std::string& column_name) override;
  int GetFieldInt(int column_index) override;
  int GetFieldInt(const std::string& column_name) override;
  int GetLastQueryError(std::string& error_info) override;
  bool ExecuteQueryUDT(const std::string& sql, const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) override;
  bool ExecuteLoop(const std::string& sql) override;
  tessel::DBTYPE GetDBType() override;
  bool ExecuteQueryContainView(const std::string& sql) override;
  bool ExecuteReturning(const std::string& sql) override;
  bool SeqenceExecute(const std::string& sql) override;
  bool SeqenceExecuteManual(const std::string& sql) override;

 private:
  bool run(const std::string& op, const std::string& sql, const std::string& extra = "");
  const std::string* field(const std::string& column_name) const;

  int db_type_;
  std::map<std::string, std::pair<int, std::string>> failing_;
  std::pair<int, std::string> last_error_{0, ""};
  std::deque<FakeResult> queued_;
  FakeResult current_;
  size_t row_ = 0;
  std::vector<FakeCall> calls_;
};

}  // namespace vexel_test

#endif  // VEXEL_TESTS_FAKECONNECT_H
