// Forwards every operation to a real connection and records which execute
// operation each statement went to, so a test can check both the rows and
// the route the library chose.
#ifndef VEXEL_TESTS_RECORDINGCONNECT_H
#define VEXEL_TESTS_RECORDINGCONNECT_H

#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"

namespace vexel_it {

class RecordingConnect : public tessel::CConnect {
 public:
  explicit RecordingConnect(std::shared_ptr<tessel::CConnect> target)
      : target_(std::move(target)) {}

  // "Operation:sql" for each execute call, in order.
  const std::vector<std::string>& calls() const { return calls_; }
  // The operation name of the last execute call.
  std::string last_op() const;

  bool ExecuteUpdate(const std::string& sql) override;
  bool ExecuteQuery(const std::string& sql) override;
  int GetLastError(std::string& error_info) override { return target_->GetLastError(error_info); }
  bool MoveNext() override { return target_->MoveNext(); }
  bool IsEOF() override { return target_->IsEOF(); }
  std::string GetFieldString(const std::string& name) override {
    return target_->GetFieldString(name);
  }
  int GetFieldInt(int index) override { return target_->GetFieldInt(index); }
  int GetFieldInt(const std::string& name) override { return target_->GetFieldInt(name); }
  int GetLastQueryError(std::string& error_info) override {
    return target_->GetLastQueryError(error_info);
  }
  bool ExecuteQueryUDT(const std::string& sql, const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) override;
  bool ExecuteLoop(const std::string& sql) override;
  tessel::DBTYPE GetDBType() override { return target_->GetDBType(); }
  bool ExecuteQueryContainView(const std::string& sql) override;
  bool ExecuteReturning(const std::string& sql) override;
  bool SeqenceExecute(const std::string& sql) override;
  bool SeqenceExecuteManual(const std::string& sql) override;

 private:
  void record(const char* op, const std::string& sql) {
    calls_.push_back(std::string(op) + ":" + sql);
  }

  std::shared_ptr<tessel::CConnect> target_;
  std::vector<std::string> calls_;
};

}  // namespace vexel_it

#endif  // VEXEL_TESTS_RECORDINGCONNECT_H
