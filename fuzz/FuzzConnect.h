// A connection whose answers come from the fuzz input: any dialect code,
// operations that fail never, always or at random, short results of random
// fields. It also holds the library to the connection contract: the error
// is read once right after each failure and never after a success.
#ifndef VEXEL_FUZZ_FUZZCONNECT_H
#define VEXEL_FUZZ_FUZZCONNECT_H

#include <string>

#include "Input.h"
#include "tessel/CConnect.h"

namespace vexel_fuzz {

class FuzzConnect : public tessel::CConnect {
 public:
  enum class Failing { kNever, kAlways, kAtRandom };

  // `input` outlives the connection.
  FuzzConnect(Input& input, int32_t db_type, Failing failing);
  ~FuzzConnect() override;

  void set_db_type(int32_t db_type) { db_type_ = db_type; }
  void set_failing(Failing failing) { failing_ = failing; }

  bool ExecuteUpdate(const std::string& sql) override { return run(sql); }
  bool ExecuteQuery(const std::string& sql) override { return run(sql); }
  int GetLastError(std::string& error_info) override { return read_error(error_info); }
  bool MoveNext() override;
  bool IsEOF() override { return rows_ <= 0; }
  std::string GetFieldString(const std::string& column_name) override;
  int GetFieldInt(int column_index) override;
  int GetFieldInt(const std::string& column_name) override;
  int GetLastQueryError(std::string& error_info) override { return read_error(error_info); }
  bool ExecuteQueryUDT(const std::string& sql, const int&) override { return run(sql); }
  bool ExecuteSortByCollate(const std::string& sql, const std::string&) override {
    return run(sql);
  }
  bool ExecuteLoop(const std::string& sql) override { return run(sql); }
  tessel::DBTYPE GetDBType() override { return static_cast<tessel::DBTYPE>(db_type_); }
  bool ExecuteQueryContainView(const std::string& sql) override { return run(sql); }
  bool ExecuteReturning(const std::string& sql) override { return run(sql); }
  bool SeqenceExecute(const std::string& sql) override { return run(sql); }
  bool SeqenceExecuteManual(const std::string& sql) override { return run(sql); }

 private:
  bool run(const std::string& sql);
  int read_error(std::string& error_info);

  Input& input_;
  int32_t db_type_;
  Failing failing_;
  // Rows left in the current result.
  int rows_ = 0;
  // A failure whose error has not been read yet.
  bool unread_failure_ = false;
};

}  // namespace vexel_fuzz

#endif  // VEXEL_FUZZ_FUZZCONNECT_H
