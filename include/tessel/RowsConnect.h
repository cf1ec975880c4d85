// The half that the shipped connections share: the last result kept as rows
// with the cursor over them, and the last failure's code and message.
// A connection derives from it and implements the execute operations.
#ifndef TESSEL_ROWSCONNECT_H
#define TESSEL_ROWSCONNECT_H

#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "tessel/ResultRows.h"

namespace tessel {

class RowsConnect : public CConnect {
 public:
  // Column names of the last result, in order.
  const std::vector<std::string>& ColumnNames() const { return rows_.columns(); }

  // Code and message of the last failure (kept until the next one); the
  // query form reports the same.
  int GetLastError(std::string& error_info) override;
  int GetLastQueryError(std::string& error_info) override;
  bool MoveNext() override;
  bool IsEOF() override;
  std::string GetFieldString(const std::string& column_name) override;
  int GetFieldInt(int column_index) override;
  int GetFieldInt(const std::string& column_name) override;

 protected:
  // Records a failure; returns false for the caller to pass on.
  bool fail(int code, const std::string& message);

  ResultRows rows_;
  int last_error_code_ = 0;
  std::string last_error_;
};

}  // namespace tessel

#endif  // TESSEL_ROWSCONNECT_H
