#include "RecordingConnect.h"

namespace vexel_it {

std::string RecordingConnect::last_op() const {
  if (calls_.empty()) return std::string();
  return calls_.back().substr(0, calls_.back().find(':'));
}

bool RecordingConnect::ExecuteUpdate(const std::string& sql) {
  record("ExecuteUpdate", sql);
  return target_->ExecuteUpdate(sql);
}

bool RecordingConnect::ExecuteQuery(const std::string& sql) {
  record("ExecuteQuery", sql);
  return target_->ExecuteQuery(sql);
}

bool RecordingConnect::ExecuteQueryUDT(const std::string& sql, const int& time_out) {
  record("ExecuteQueryUDT", sql);
  return target_->ExecuteQueryUDT(sql, time_out);
}

bool RecordingConnect::ExecuteSortByCollate(const std::string& sql,
                                            const std::string& collate_name) {
  record("ExecuteSortByCollate", sql);
  return target_->ExecuteSortByCollate(sql, collate_name);
}

bool RecordingConnect::ExecuteLoop(const std::string& sql) {
  record("ExecuteLoop", sql);
  return target_->ExecuteLoop(sql);
}

bool RecordingConnect::ExecuteQueryContainView(const std::string& sql) {
  record("ExecuteQueryContainView", sql);
  return target_->ExecuteQueryContainView(sql);
}

bool RecordingConnect::ExecuteReturning(const std::string& sql) {
  record("ExecuteReturning", sql);
  return target_->ExecuteReturning(sql);
}

bool RecordingConnect::SeqenceExecute(const std::string& sql) {
  record("SeqenceExecute", sql);
  return target_->SeqenceExecute(sql);
}

bool RecordingConnect::SeqenceExecuteManual(const std::string& sql) {
  record("SeqenceExecuteManual", sql);
  return target_->SeqenceExecuteManual(sql);
}

}  // namespace vexel_it
