#include "tessel/RowsConnect.h"

namespace tessel {

int RowsConnect::GetLastError(std::string& error_info) {
  error_info = last_error_;
  return last_error_code_;
}

int RowsConnect::GetLastQueryError(std::string& error_info) { return GetLastError(error_info); }

bool RowsConnect::MoveNext() { return rows_.MoveNext(); }
bool RowsConnect::IsEOF() { return rows_.IsEOF(); }

std::string RowsConnect::GetFieldString(const std::string& column_name) {
  return rows_.Field(column_name);
}

int RowsConnect::GetFieldInt(int column_index) { return rows_.IntField(column_index); }
int RowsConnect::GetFieldInt(const std::string& column_name) { return rows_.IntField(column_name); }

bool RowsConnect::fail(int code, const std::string& message) {
  last_error_code_ = code;
  last_error_ = message;
  return false;
}

}  // namespace tessel
