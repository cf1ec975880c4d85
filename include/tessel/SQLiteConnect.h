/// \file
/// A tessel::CConnect over an embedded SQLite database (dialect 1).
///
/// \code
/// auto conn = std::make_shared<tessel::SQLiteConnect>(":memory:");
/// vexel::QueryBuilder q(conn);
/// \endcode
///
/// Every execute operation runs all statements of its text in order (no
/// implicit transaction: statements before a failing one stay done) and
/// keeps the rows of the last statement that returns columns for the
/// cursor; a failure leaves an empty result.
///
/// Rows are read as the engine steps: when the text's last statement is a
/// read-only query, the operation steps it to its first row and returns,
/// MoveNext steps on, and each value is read from the statement when it is
/// asked for, so memory stays the same whatever the number of rows. The
/// statement (and the read transaction it holds) ends with its last row, or
/// when the next operation of this connection starts. A query followed by
/// other statements, and a statement that changes data (INSERT ... RETURNING
/// and the like), run to their end first, their rows kept whole.
///
/// An engine failure after the first row (a function's error, the time-out,
/// a corrupt page) cannot fail the operation, which has already returned
/// true: it ends the cursor instead. MoveNext returns false, IsEOF is true,
/// GetLastError / GetLastQueryError give the failure's code and message,
/// and one line is logged. A reader that must tell a complete result from a
/// cut one compares the last error before and after its loop. A text with a NUL byte is
/// refused with SQLITE_ERROR. The looped, collation, view-aware, returning
/// and sequence forms run their text the same way: SQLite reads rows one by
/// one anyway, collations are named in the text itself, views need nothing
/// special, and the sequence statements leave the value they select
/// readable through the cursor.
///
/// The connection registers the SQL functions that the library's SQLite
/// texts call: regexp(text, pattern, mode) and the str_bit_* functions.
///
/// GetLastError / GetLastQueryError give SQLite's extended result code and
/// message of the last failure (kept until the next failure, also across
/// later successes: read them only after an operation returned false).
#ifndef TESSEL_SQLITECONNECT_H
#define TESSEL_SQLITECONNECT_H

#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "tessel/RowsConnect.h"

struct sqlite3;
struct sqlite3_stmt;

namespace tessel {

class StepClock;

/// A connection to an embedded SQLite database (dialect 1); see the file's
/// description for how it runs texts and steps rows.
///
/// \code
/// auto conn = std::make_shared<tessel::SQLiteConnect>(":memory:");
/// conn->ExecuteUpdate("CREATE TABLE t (id INTEGER PRIMARY KEY, name TEXT)");
/// vexel::InsertBuilder ins(conn);
/// ins.INSERT_INTO(vexel::tab("t")).COLUMNS({vexel::col("name")}).VALUES({vexel::SQLValue("a")});
/// ins.Execute();  // INSERT INTO t(name) VALUES('a')
/// \endcode
class SQLiteConnect : public RowsConnect {
 public:
  /// Opens (creating if needed) a database file, or ":memory:".
  explicit SQLiteConnect(const std::string& path);
  ~SQLiteConnect() override;
  SQLiteConnect(const SQLiteConnect&) = delete;
  SQLiteConnect& operator=(const SQLiteConnect&) = delete;

  /// False when the database could not be opened; every operation then
  /// fails with the reason.
  bool IsOpen() const { return db_ != nullptr; }
  /// A limit in seconds for every statement of this connection (0: none).
  /// The library passes SQLite's time-out form through ExecuteQuery, so a
  /// host that wants such statements stopped sets the limit here.
  void SetStatementTimeOut(int seconds) { statement_time_out_ = seconds; }

  bool ExecuteUpdate(const std::string& sql) override;
  bool ExecuteQuery(const std::string& sql) override;
  /// Stops the statement once it has run `time_out` seconds (0 or less: the
  /// connection's own limit) and fails with SQLITE_INTERRUPT and a message
  /// naming the time-out. The time counts while the engine works, also for
  /// the rows MoveNext reads later, not while the caller works between rows.
  bool ExecuteQueryUDT(const std::string& sql, const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) override;
  bool ExecuteLoop(const std::string& sql) override;
  DBTYPE GetDBType() override { return DB_SQLITE; }
  bool ExecuteQueryContainView(const std::string& sql) override;
  bool ExecuteReturning(const std::string& sql) override;
  bool SeqenceExecute(const std::string& sql) override;
  bool SeqenceExecuteManual(const std::string& sql) override;
  bool InTransaction() override;

 private:
  friend class SQLiteRows;
  bool run(const std::string& sql, int time_out);
  /// Binds each ?NNN placeholder of `stmt` to value NNN of `params`.
  bool bind(sqlite3_stmt* stmt, const std::vector<Param>& params);
  /// Records the engine's failure of the last step (naming the time-out
  /// when that stopped it); returns false.
  bool step_failed();
  bool fail_read(bool no_field, const std::string& message) override;

  sqlite3* db_ = nullptr;
  std::unique_ptr<StepClock> clock_;
  int statement_time_out_ = 0;
  std::string open_error_;
};

}  // namespace tessel

#endif  // TESSEL_SQLITECONNECT_H
