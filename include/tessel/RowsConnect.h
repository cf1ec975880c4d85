/// \file
/// The half that the shipped connections share: the cursor over the last
/// result, the typed reads, and the last failure's code and message. A
/// connection derives from it, implements the execute operations and hands
/// each result over as a ResultSource.
///
/// Typed reads (beyond tessel::CConnect, whose reads turn NULL into "" and
/// clamp integers to int): each says whether it read a value, a NULL or
/// failed. A failure (no column of that name or index, no current row, a
/// value that is not of the type asked for) writes one log line and is kept
/// as the last error, which GetLastError then reports.
#ifndef TESSEL_ROWSCONNECT_H
#define TESSEL_ROWSCONNECT_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "tessel/Param.h"
#include "tessel/ResultSource.h"

namespace tessel {

class Transaction;

/// What a typed read found.
enum class FieldRead { kValue, kNull, kError };

/// Base of the shipped connections: the cursor over the last result, typed
/// NULL-aware reads, bound parameters and the last failure.
///
/// \code
/// vexel::QueryBuilder q(conn);  // conn: std::shared_ptr<tessel::SQLiteConnect>
/// q.SELECT({vexel::col("id"), vexel::col("name")}).FROM(vexel::tab("t"));
/// if (q.Execute()) {
///   for (; !conn->IsEOF(); conn->MoveNext()) {
///     int64_t id = 0;
///     std::string name;
///     if (conn->GetInt64("id", id) == tessel::FieldRead::kValue &&
///         conn->GetText("name", name) != tessel::FieldRead::kError) { ... }
///   }
/// }
/// \endcode
class RowsConnect : public CConnect {
 public:
  ~RowsConnect() override;

  /// Column names of the last result, in order, and their number.
  const std::vector<std::string>& ColumnNames() const { return result_->names(); }
  /// Number of columns of the last result.
  int ColumnCount() const { return result_->ColumnCount(); }
  /// The named column's index (names match as GetFieldString matches them);
  /// -1 with a logged error when the last result has no such column.
  int ColumnIndex(const std::string& column_name);

  /// Code and message of the last failure (kept until the next one); the
  /// query form reports the same.
  int GetLastError(std::string& error_info) override;
  int GetLastQueryError(std::string& error_info) override;
  bool MoveNext() override;
  /// True after the last row.
  bool IsEOF() override;
  /// NULL and an unknown column read as ""; integers take the value's
  /// leading number, clamped to int (0 when it has none).
  std::string GetFieldString(const std::string& column_name) override;
  ///@{
  /// The value's leading integer, clamped to int (0 for NULL or none).
  int GetFieldInt(int column_index) override;
  int GetFieldInt(const std::string& column_name) override;
  ///@}

  ///@{
  /// True for a NULL in the current row (false, with the error, when there
  /// is no such field).
  bool IsNull(int column_index);
  bool IsNull(const std::string& column_name);
  ///@}
  ///@{
  /// The whole value as a 64-bit integer, by index or name: an integer the
  /// engine keeps, or a text that is exactly one (no blanks, no fraction).
  FieldRead GetInt64(int column_index, int64_t& value);
  FieldRead GetInt64(const std::string& column_name, int64_t& value);
  ///@}
  ///@{
  /// The whole value as a double, by index or name: a floating value or
  /// integer the engine keeps, or a decimal text (also "Infinity",
  /// "-Infinity", "NaN").
  FieldRead GetDouble(int column_index, double& value);
  FieldRead GetDouble(const std::string& column_name, double& value);
  ///@}
  ///@{
  /// The value as a boolean, by index or name: integers 0 and 1, texts
  /// "t"/"true"/"1" and "f"/"false"/"0".
  FieldRead GetBool(int column_index, bool& value);
  FieldRead GetBool(const std::string& column_name, bool& value);
  ///@}
  ///@{
  /// The value as text, byte for byte, by index or name.
  FieldRead GetText(int column_index, std::string& value);
  FieldRead GetText(const std::string& column_name, std::string& value);
  ///@}

  /// Values for the numbered placeholders ($1 on PostgreSQL, ?1 on SQLite)
  /// of the next statement this connection runs for the caller: it runs with
  /// them bound (a PostgreSQL text then holds one statement), and they are
  /// forgotten. vexel::Params writes the placeholders and the values.
  void BindNext(std::vector<Param> values) { params_ = std::move(values); }

  /// True while a transaction is open on the connection (opened by a
  /// Transaction guard or by the caller's own text).
  virtual bool InTransaction() = 0;

 protected:
  RowsConnect();
  /// Records a failure; returns false for the caller to pass on.
  bool fail(int code, const std::string& message);
  /// Records a failure of a read and logs it.
  bool read_failed(bool no_field, const char* function, const std::string& message);
  /// Records, with the connection's own code, a read of a missing field
  /// (`no_field`) or of a value not of the type asked for.
  virtual bool fail_read(bool no_field, const std::string& message) = 0;
  /// Ends the current result early (releasing what the engine holds for it)
  /// and leaves an empty one.
  void clear_result();
  /// Makes `result` the one the cursor reads.
  void set_result(std::unique_ptr<ResultSource> result) { result_ = std::move(result); }
  /// The result the cursor reads.
  ResultSource& result() { return *result_; }
  /// The values given to BindNext, once.
  std::vector<Param> take_params() {
    std::vector<Param> taken;
    taken.swap(params_);
    return taken;
  }

  /// Code of the last failure.
  int last_error_code_ = 0;
  /// Message of the last failure.
  std::string last_error_;

 private:
  friend class Transaction;
  /// The index checked against the current row, or -1 after a logged error.
  int field(int column_index, const char* function);
  int field(const std::string& column_name, const char* function);
  /// A typed read of the field at a column index or name.
  template <typename Column, typename T>
  FieldRead read(const Column& at, const char* function, T& value);

  std::unique_ptr<ResultSource> result_;
  std::vector<Param> params_;
  int open_guards_ = 0;  ///< Transaction guards alive on this connection
};

}  // namespace tessel

#endif  // TESSEL_ROWSCONNECT_H
