/// \file
/// A tessel::CConnect over a PostgreSQL server through libpq (dialect 2).
///
/// \code
/// auto conn = std::make_shared<tessel::PGConnect>("host=/run/pg dbname=app");
/// if (!conn->IsOpen()) { std::string why; conn->GetLastError(why); ... }
/// \endcode
///
/// What each operation does with its text:
/// - ExecuteUpdate, ExecuteQuery, ExecuteReturning, SeqenceExecute,
///   SeqenceExecuteManual: run the text (one or more statements, as one
///   round trip) and keep the rows of the last statement for the cursor.
///   The server runs such a text as one implicit transaction: a failing
///   statement undoes the ones before it (unless the text commits them
///   itself). A text with a NUL byte is refused with SQLSTATE 22021.
/// - ExecuteQueryContainView: the same; a view in "public" needs nothing
///   special on PostgreSQL.
/// - ExecuteQueryUDT(sql, t): runs the text with statement_timeout set to t
///   seconds for that text only (SET LOCAL inside a transaction of its own,
///   or inside the caller's open transaction with the previous value put
///   back afterwards); t <= 0 runs it without a limit. A statement stopped by
///   the limit fails with SQLSTATE 57014.
/// - ExecuteLoop(sql): the form for results too large for memory. It
///   declares a server-side cursor over the text (a single query), fetches
///   the first LoopBatchSize() rows and returns; MoveNext fetches the next
///   batch when the reader gets past the last row of one, so at most one
///   batch is held. The cursor lives in a transaction of its own unless one
///   is open; the last batch closes it and commits that transaction, and so
///   does the next operation of this connection when the reader stops early.
///   A failure in a later batch (a cast that fails in row 90,000) ends the
///   cursor: MoveNext returns false, IsEOF is true, GetLastError gives the
///   server's error, one line is logged, and the loop's own transaction is
///   rolled back (a caller's transaction is left aborted, as by any error).
///   The rows read before stay read; the failing batch's rows are lost.
/// - ExecuteSortByCollate(sql, name): checks that the collation exists (a
///   misspelt name fails with SQLSTATE 42704 instead of sorting silently by
///   the default), then runs the text; the text names the collation in its
///   own ORDER BY where it wants one.
///
/// Every other form holds the whole result in libpq's own PGresult, the one
/// copy there is: the cursor and the typed reads read the values in place,
/// and the result is freed when the next operation starts.
///
/// GetLastError / GetLastQueryError give the last failure's SQLSTATE packed
/// into an int (ErrorCode, six bits a character, as the server packs it) and
/// the text "SQLSTATE: message" on one line. Both keep the last failure
/// after later successes: read them only after an operation returned false.
/// A connection that could not be made or was lost reports 08006; its
/// operations fail until Reconnect() succeeds.
#ifndef TESSEL_PGCONNECT_H
#define TESSEL_PGCONNECT_H

#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "tessel/RowsConnect.h"

struct pg_conn;
struct pg_result;

namespace tessel {

enum class LoopEnd : int;

/// A connection to a PostgreSQL server through libpq (dialect 2); see the
/// file's description for what each operation does with its text.
class PGConnect : public RowsConnect {
 public:
  /// Connects with a libpq connection string ("host=... dbname=...").
  explicit PGConnect(const std::string& conninfo);
  ~PGConnect() override;
  PGConnect(const PGConnect&) = delete;
  PGConnect& operator=(const PGConnect&) = delete;

  /// True while connected.
  bool IsOpen() const;
  /// Connects again with the same connection string.
  bool Reconnect();
  /// The code GetLastError reports for a five-character SQLSTATE.
  static int ErrorCode(const std::string& sqlstate);

  /// Rows ExecuteLoop fetches per batch (default 1000).
  int LoopBatchSize() const { return loop_batch_size_; }
  /// Sets the rows per ExecuteLoop batch (at least 1).
  void SetLoopBatchSize(int rows) { loop_batch_size_ = rows > 0 ? rows : 1; }

  bool ExecuteUpdate(const std::string& sql) override;
  bool ExecuteQuery(const std::string& sql) override;
  bool ExecuteQueryUDT(const std::string& sql, const int& time_out) override;
  bool ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) override;
  bool ExecuteLoop(const std::string& sql) override;
  DBTYPE GetDBType() override { return DB_POSTGRESQL; }
  bool ExecuteQueryContainView(const std::string& sql) override;
  bool ExecuteReturning(const std::string& sql) override;
  bool SeqenceExecute(const std::string& sql) override;
  bool SeqenceExecuteManual(const std::string& sql) override;
  bool InTransaction() override { return in_transaction(); }

 private:
  friend class PGLoopRows;
  /// Runs `sql`: its result (the caller's to free), or null with the
  /// failure recorded.
  /// With `params`, the text is one statement whose $n take them.
  pg_result* exec(const std::string& sql, const std::vector<Param>& params = {});
  /// Runs `sql` and keeps its result for the cursor.
  bool keep(const std::string& sql);
  /// Runs a statement of the connection's own, keeping no rows.
  bool command(const std::string& sql);
  /// The loop cursor's next batch, or null with the failure recorded.
  pg_result* fetch_loop_batch();
  void end_loop(bool own, LoopEnd how);
  bool fail_read(bool no_field, const std::string& message) override;
  /// Runs a clean-up statement whose failure must not hide an earlier error.
  void quietly(const std::string& sql);
  /// True (with the failure recorded) for a text libpq would cut short.
  bool refused(const std::string& sql);
  void end_copy(int status);
  bool usable();
  bool fail(const std::string& sqlstate, const std::string& message);
  bool fail_with(const pg_result* result);
  bool in_transaction() const;

  std::string conninfo_;
  pg_conn* conn_ = nullptr;
  int loop_batch_size_ = 1000;
  std::string loop_fetch_;  ///< the FETCH of the loop being read
};

}  // namespace tessel

#endif  // TESSEL_PGCONNECT_H
