#include "tessel/RowsConnect.h"

#include <climits>

#include "common/FieldText.h"
#include "common/HostLog.h"
#include "tessel/ResultRows.h"

namespace tessel {
namespace {

// Converts the field, of kind `kind` (not NULL), to the type.
bool convert(const ResultSource& r, int column, ValueKind kind, int64_t& value) {
  if (kind == ValueKind::kInt) value = r.Int(column);
  return kind == ValueKind::kInt || host::WholeInt64(r.Text(column), value);
}

bool convert(const ResultSource& r, int column, ValueKind kind, double& value) {
  if (kind == ValueKind::kDouble) value = r.Double(column);
  if (kind == ValueKind::kInt) value = static_cast<double>(r.Int(column));
  return kind == ValueKind::kDouble || kind == ValueKind::kInt ||
         host::WholeDouble(r.Text(column), value);
}

bool convert(const ResultSource& r, int column, ValueKind kind, bool& value) {
  if (kind != ValueKind::kInt) return host::WholeBool(r.Text(column), value);
  const int64_t whole = r.Int(column);
  value = whole != 0;
  return whole == 0 || whole == 1;
}

bool convert(const ResultSource& r, int column, ValueKind, std::string& value) {
  value.assign(r.Text(column));
  return true;
}

const char* type_name(const int64_t&) { return "a 64-bit integer"; }
const char* type_name(const double&) { return "a double"; }
const char* type_name(const bool&) { return "a boolean"; }
const char* type_name(const std::string&) { return "text"; }

}  // namespace

RowsConnect::RowsConnect() : result_(std::make_unique<ResultRows>()) {}

// Derived connections end their result before they close the engine.
RowsConnect::~RowsConnect() = default;

void RowsConnect::clear_result() {
  // Replaced first: closing may run statements of the connection's own.
  std::unique_ptr<ResultSource> old = std::move(result_);
  result_ = std::make_unique<ResultRows>();
  old->Close();
}

int RowsConnect::GetLastError(std::string& error_info) {
  error_info = last_error_;
  return last_error_code_;
}

int RowsConnect::GetLastQueryError(std::string& error_info) { return GetLastError(error_info); }

bool RowsConnect::MoveNext() { return result_->AtRow() && result_->Next(); }
bool RowsConnect::IsEOF() { return !result_->AtRow(); }

std::string RowsConnect::GetFieldString(const std::string& column_name) {
  const int column = result_->IndexOf(column_name);
  if (column < 0 || !result_->AtRow()) return std::string();
  return std::string(result_->Text(column));
}

int RowsConnect::GetFieldInt(int column_index) {
  if (column_index < 0 || column_index >= result_->ColumnCount() || !result_->AtRow()) return 0;
  if (result_->Kind(column_index) != ValueKind::kInt)
    return host::LeadingInt(result_->Text(column_index));
  const int64_t value = result_->Int(column_index);
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

int RowsConnect::GetFieldInt(const std::string& column_name) {
  return GetFieldInt(result_->IndexOf(column_name));
}

int RowsConnect::ColumnIndex(const std::string& column_name) {
  const int column = result_->IndexOf(column_name);
  if (column < 0) {
    read_failed(true, "tessel::RowsConnect::ColumnIndex",
                "the result has no column \"" + column_name + "\"");
  }
  return column;
}

int RowsConnect::field(int column_index, const char* function) {
  if (column_index < 0 || column_index >= result_->ColumnCount()) {
    read_failed(true, function,
                "the result has no column " + std::to_string(column_index) + " (it has " +
                    std::to_string(result_->ColumnCount()) + ")");
    return -1;
  }
  if (!result_->AtRow()) {
    read_failed(true, function, "the cursor is past the last row");
    return -1;
  }
  return column_index;
}

int RowsConnect::field(const std::string& column_name, const char* function) {
  const int column = result_->IndexOf(column_name);
  if (column < 0) {
    read_failed(true, function, "the result has no column \"" + column_name + "\"");
    return -1;
  }
  return field(column, function);
}

template <typename Column, typename T>
FieldRead RowsConnect::read(const Column& at, const char* function, T& value) {
  const int column = field(at, function);
  if (column < 0) return FieldRead::kError;
  const ValueKind kind = result_->Kind(column);
  if (kind == ValueKind::kNull) return FieldRead::kNull;
  if (convert(*result_, column, kind, value)) return FieldRead::kValue;
  read_failed(false, function,
              "column " + std::to_string(column) + " (\"" +
                  result_->names()[static_cast<size_t>(column)] + "\") holds \"" +
                  std::string(result_->Text(column).substr(0, 64)) + "\", not " + type_name(value));
  return FieldRead::kError;
}

bool RowsConnect::IsNull(int column_index) {
  const int column = field(column_index, "tessel::RowsConnect::IsNull");
  return column >= 0 && result_->Kind(column) == ValueKind::kNull;
}

bool RowsConnect::IsNull(const std::string& column_name) {
  const int column = field(column_name, "tessel::RowsConnect::IsNull");
  return column >= 0 && result_->Kind(column) == ValueKind::kNull;
}

FieldRead RowsConnect::GetInt64(int column_index, int64_t& value) {
  return read(column_index, "tessel::RowsConnect::GetInt64", value);
}
FieldRead RowsConnect::GetInt64(const std::string& column_name, int64_t& value) {
  return read(column_name, "tessel::RowsConnect::GetInt64", value);
}
FieldRead RowsConnect::GetDouble(int column_index, double& value) {
  return read(column_index, "tessel::RowsConnect::GetDouble", value);
}
FieldRead RowsConnect::GetDouble(const std::string& column_name, double& value) {
  return read(column_name, "tessel::RowsConnect::GetDouble", value);
}
FieldRead RowsConnect::GetBool(int column_index, bool& value) {
  return read(column_index, "tessel::RowsConnect::GetBool", value);
}
FieldRead RowsConnect::GetBool(const std::string& column_name, bool& value) {
  return read(column_name, "tessel::RowsConnect::GetBool", value);
}
FieldRead RowsConnect::GetText(int column_index, std::string& value) {
  return read(column_index, "tessel::RowsConnect::GetText", value);
}
FieldRead RowsConnect::GetText(const std::string& column_name, std::string& value) {
  return read(column_name, "tessel::RowsConnect::GetText", value);
}

bool RowsConnect::fail(int code, const std::string& message) {
  last_error_code_ = code;
  last_error_ = message;
  return false;
}

bool RowsConnect::read_failed(bool no_field, const char* function, const std::string& message) {
  host::LogLine(5, function, __FILE__, __LINE__, message);
  return fail_read(no_field, message);
}

}  // namespace tessel
