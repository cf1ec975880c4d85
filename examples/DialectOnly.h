// A connection that only states a dialect. A builder made over it renders
// that dialect's text; its execute operations fail, since there is no
// database behind it. Handy for printing or logging statements.
#ifndef VEXEL_EXAMPLES_DIALECTONLY_H
#define VEXEL_EXAMPLES_DIALECTONLY_H

#include <string>

#include <tessel/CConnect.h>

class DialectOnly : public tessel::CConnect {
 public:
  explicit DialectOnly(tessel::DBTYPE db) : db_(db) {}

  tessel::DBTYPE GetDBType() override { return db_; }

  bool ExecuteUpdate(const std::string&) override { return false; }
  bool ExecuteQuery(const std::string&) override { return false; }
  bool ExecuteQueryUDT(const std::string&, const int&) override { return false; }
  bool ExecuteSortByCollate(const std::string&, const std::string&) override { return false; }
  bool ExecuteLoop(const std::string&) override { return false; }
  bool ExecuteQueryContainView(const std::string&) override { return false; }
  bool ExecuteReturning(const std::string&) override { return false; }
  bool SeqenceExecute(const std::string&) override { return false; }
  bool SeqenceExecuteManual(const std::string&) override { return false; }
  int GetLastError(std::string& error_info) override {
    error_info = "no database: this connection only renders text";
    return -1;
  }
  int GetLastQueryError(std::string& error_info) override { return GetLastError(error_info); }
  bool MoveNext() override { return false; }
  bool IsEOF() override { return true; }
  std::string GetFieldString(const std::string&) override { return std::string(); }
  int GetFieldInt(int) override { return 0; }
  int GetFieldInt(const std::string&) override { return 0; }

 private:
  tessel::DBTYPE db_;
};

#endif  // VEXEL_EXAMPLES_DIALECTONLY_H
