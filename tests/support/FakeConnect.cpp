#include "support/FakeConnect.h"

#include <cstdlib>

namespace vexel_test {

FakeConnect::FakeConnect(int db_type) : db_type_(db_type) {}

void FakeConnect::FailOn(const std::string& op, int code, const std::string& info) {
  failing_[op] = {code, info};
}

std::vector<FakeCall> FakeConnect::calls_of(const std::string& op) const {
  std::vector<FakeCall> out;
  for (const FakeCall& c : calls_) {
    if (c.op == op) out.push_back(c);
  }
  return out;
}

int FakeConnect::count(const std::string& op) const {
  return static_cast<int>(calls_of(op).size());
}

std::vector<std::string> FakeConnect::statements() const {
  std::vector<std::string> out;
  for (const FakeCall& c : calls_) {
    if (c.op.rfind("Execute", 0) == 0 || c.op.rfind("Seqence", 0) == 0) {
      out.push_back(c.op + ":" + c.sql);
    }
  }
  return out;
}

bool FakeConnect::run(const std::string& op, const std::string& sql, const std::string& extra) {
  calls_.push_back({op, sql, extra});
  auto it = failing_.find(op);
  if (it != failing_.end()) {
    last_error_ = it->second;
    return false;
  }
  current_.clear();
  row_ = 0;
  if (!queued_.empty()) {
    current_ = std::move(queued_.front());
    queued_.pop_front();
  }
  return true;
}

const std::string* FakeConnect::field(const std::string& column_name) const {
  if (row_ >= current_.size()) return nullptr;
  for (const auto& cell : current_[row_]) {
    if (cell.first == column_name) return &cell.second;
  }
  return nullptr;
}

bool FakeConnect::ExecuteUpdate(const std::string& sql) { return run("ExecuteUpdate", sql); }
bool FakeConnect::ExecuteQuery(const std::string& sql) { return run("ExecuteQuery", sql); }

int FakeConnect::GetLastError(std::string& error_info) {
  calls_.push_back({"GetLastError", "", ""});
  error_info = last_error_.second;
  return last_error_.first;
}

bool FakeConnect::MoveNext() {
  calls_.push_back({"MoveNext", "", ""});
  if (row_ < current_.size()) ++row_;
  return row_ < current_.size();
}

bool FakeConnect::IsEOF() {
  calls_.push_back({"IsEOF", "", ""});
  return row_ >= current_.size();
}

std::string FakeConnect::GetFieldString(const std::string& column_name) {
  calls_.push_back({"GetFieldString", "", column_name});
  const std::string* value = field(column_name);
  return value != nullptr ? *value : std::string();
}

int FakeConnect::GetFieldInt(int column_index) {
  calls_.push_back({"GetFieldInt", "", std::to_string(column_index)});
  if (row_ >= current_.size() || column_index < 0 ||
      static_cast<size_t>(column_index) >= current_[row_].size()) {
    return 0;
  }
  return std::atoi(current_[row_][static_cast<size_t>(column_index)].second.c_str());
}

int FakeConnect::GetFieldInt(const std::string& column_name) {
  calls_.push_back({"GetFieldInt", "", column_name});
  const std::string* value = field(column_name);
  return value != nullptr ? std::atoi(value->c_str()) : 0;
}

int FakeConnect::GetLastQueryError(std::string& error_info) {
  calls_.push_back({"GetLastQueryError", "", ""});
  error_info = last_error_.second;
  return last_error_.first;
}

bool FakeConnect::ExecuteQueryUDT(const std::string& sql, const int& time_out) {
  return run("ExecuteQueryUDT", sql, std::to_string(time_out));
}

bool FakeConnect::ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) {
  return run("ExecuteSortByCollate", sql, collate_name);
}

bool FakeConnect::ExecuteLoop(const std::string& sql) { return run("ExecuteLoop", sql); }

tessel::DBTYPE FakeConnect::GetDBType() {
  calls_.push_back({"GetDBType", "", ""});
  return static_cast<tessel::DBTYPE>(db_type_);
}

bool FakeConnect::ExecuteQueryContainView(const std::string& sql) {
  return run("ExecuteQueryContainView", sql);
}

bool FakeConnect::ExecuteReturning(const std::string& sql) { return run("ExecuteReturning", sql); }
bool FakeConnect::SeqenceExecute(const std::string& sql) { return run("SeqenceExecute", sql); }
bool FakeConnect::SeqenceExecuteManual(const std::string& sql) {
  return run("SeqenceExecuteManual", sql);
}

}  // namespace vexel_test
