#include "tessel/PGConnect.h"

#include <libpq-fe.h>

#include <climits>
#include <memory>
#include <utility>
#include <vector>

#include "postgres/PGRows.h"

namespace tessel {
namespace {

// SQLSTATEs the connection reports for failures that have none of their own.
constexpr char kConnectionFailure[] = "08006";
constexpr char kUndefinedObject[] = "42704";
constexpr char kFeatureNotSupported[] = "0A000";
constexpr char kNulInText[] = "22021";
constexpr int kMaxPendingResults = 16;
constexpr char kLoopCursor[] = "vexel_loop_cursor";

struct ResultDeleter {
  void operator()(PGresult* r) const { PQclear(r); }
};
using Result = std::unique_ptr<PGresult, ResultDeleter>;

// Notices (warnings, "there is no transaction in progress") would otherwise
// go to the host's standard error.
void ignore_notice(void*, const char*) {}

// libpq's own messages span lines ("server closed the connection
// unexpectedly\n\tThis probably means ..."); a line break and the
// indentation after it become one blank so that the log line stays whole.
std::string one_line(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (const char c : text) {
    if (c == '\n' || c == '\r' || c == '\t') {
      if (!out.empty() && out.back() != ' ') out += ' ';
    } else {
      out += c;
    }
  }
  while (!out.empty() && out.back() == ' ') out.pop_back();
  return out;
}

// The text without trailing blanks and ";", for embedding in DECLARE.
std::string single_statement(const std::string& sql) {
  size_t end = sql.size();
  while (end > 0 && (sql[end - 1] == ';' || sql[end - 1] == ' ' || sql[end - 1] == '\n' ||
                     sql[end - 1] == '\t' || sql[end - 1] == '\r')) {
    --end;
  }
  return sql.substr(0, end);
}

}  // namespace

PGConnect::PGConnect(const std::string& conninfo) : conninfo_(conninfo) { Reconnect(); }

PGConnect::~PGConnect() {
  // A loop being read closes its cursor before the connection goes.
  clear_result();
  if (conn_ != nullptr) PQfinish(conn_);
}

bool PGConnect::IsOpen() const { return conn_ != nullptr && PQstatus(conn_) == CONNECTION_OK; }

bool PGConnect::Reconnect() {
  clear_result();
  if (conn_ != nullptr) PQfinish(conn_);
  conn_ = PQconnectdb(conninfo_.c_str());
  if (conn_ == nullptr) return fail(kConnectionFailure, "out of memory while connecting");
  PQsetNoticeProcessor(conn_, ignore_notice, nullptr);
  if (PQstatus(conn_) != CONNECTION_OK) {
    return fail(kConnectionFailure, "cannot connect: " + one_line(PQerrorMessage(conn_)));
  }
  return true;
}

int PGConnect::ErrorCode(const std::string& sqlstate) {
  if (sqlstate.size() != 5) return -1;
  int code = 0;
  for (size_t i = 0; i < 5; ++i) {
    code += ((sqlstate[i] - '0') & 0x3F) << (6 * i);
  }
  return code;
}

bool PGConnect::fail(const std::string& sqlstate, const std::string& message) {
  return RowsConnect::fail(ErrorCode(sqlstate), sqlstate + ": " + message);
}

bool PGConnect::fail_with(const PGresult* result) {
  const char* state = result != nullptr ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
  // The primary message keeps the log line on one line; the full text adds
  // "ERROR:" and a caret under the statement.
  const char* primary =
      result != nullptr ? PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
  std::string message = primary != nullptr ? primary : "";
  if (message.empty() && result != nullptr) message = PQresultErrorMessage(result);
  if (message.empty() && conn_ != nullptr) message = PQerrorMessage(conn_);
  // A result without SQLSTATE comes from libpq itself: the server is gone.
  return fail(state != nullptr ? state : kConnectionFailure, one_line(message));
}

bool PGConnect::usable() {
  if (IsOpen()) return true;
  std::string reason = conn_ != nullptr ? one_line(PQerrorMessage(conn_)) : "";
  return fail(kConnectionFailure,
              "no connection to the server" + (reason.empty() ? "" : ": " + reason));
}

bool PGConnect::in_transaction() const {
  return conn_ != nullptr && PQtransactionStatus(conn_) != PQTRANS_IDLE;
}

PGresult* PGConnect::exec(const std::string& sql, const std::vector<Param>& params) {
  if (refused(sql) || !usable()) return nullptr;
  Result result;
  if (params.empty()) {
    result.reset(PQexec(conn_, sql.c_str()));
  } else {
    // Sent as text, their types taken from where they stand.
    std::vector<const char*> values;
    for (const Param& p : params) {
      values.push_back(p.kind == Param::Kind::kNull ? nullptr : p.text.c_str());
    }
    result.reset(PQexecParams(conn_, sql.c_str(), static_cast<int>(values.size()), nullptr,
                              values.data(), nullptr, nullptr, 0));
  }
  const ExecStatusType status = result ? PQresultStatus(result.get()) : PGRES_FATAL_ERROR;
  switch (status) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_EMPTY_QUERY:
      return result.release();
    case PGRES_COPY_IN:
    case PGRES_COPY_OUT:
    case PGRES_COPY_BOTH:
      end_copy(status);
      fail(kFeatureNotSupported, "COPY FROM STDIN / TO STDOUT is not supported");
      return nullptr;
    default:
      fail_with(result.get());
      return nullptr;
  }
}

bool PGConnect::command(const std::string& sql) { return Result(exec(sql)) != nullptr; }

bool PGConnect::keep(const std::string& sql) {
  clear_result();
  PGresult* result = exec(sql, take_params());
  if (result == nullptr) return false;
  set_result(std::make_unique<PGRows>(result));
  return true;
}

bool PGConnect::fail_read(bool no_field, const std::string& message) {
  return fail(no_field ? "42703" : "22P02", message);
}

// COPY through STDIN/STDOUT needs a data channel this interface lacks: the
// data is refused or drained so that the connection stays usable.
void PGConnect::end_copy(int status) {
  if (status == PGRES_COPY_IN) {
    PQputCopyEnd(conn_, "COPY FROM STDIN is not supported by this connection");
  } else if (status == PGRES_COPY_OUT) {
    char* buffer = nullptr;
    while (PQgetCopyData(conn_, &buffer, 0) > 0) PQfreemem(buffer);
  }
  // Bounded: a replication stream (COPY BOTH) never ends by itself.
  for (int i = 0; i < kMaxPendingResults; ++i) {
    Result rest(PQgetResult(conn_));
    if (!rest) break;
  }
}

// libpq sends a text up to its first NUL byte: the rest would be dropped
// silently. The server refuses such bytes in text the same way.
bool PGConnect::refused(const std::string& sql) {
  const size_t nul = sql.find('\0');
  if (nul == std::string::npos) return false;
  fail(kNulInText, "the SQL text contains a NUL byte at offset " + std::to_string(nul));
  return true;
}

void PGConnect::quietly(const std::string& sql) {
  const int code = last_error_code_;
  std::string error = last_error_;
  command(sql);
  last_error_code_ = code;
  last_error_ = std::move(error);
}

bool PGConnect::ExecuteUpdate(const std::string& sql) { return keep(sql); }
bool PGConnect::ExecuteQuery(const std::string& sql) { return keep(sql); }
bool PGConnect::ExecuteQueryContainView(const std::string& sql) { return keep(sql); }
bool PGConnect::ExecuteReturning(const std::string& sql) { return keep(sql); }
bool PGConnect::SeqenceExecute(const std::string& sql) { return keep(sql); }
bool PGConnect::SeqenceExecuteManual(const std::string& sql) { return keep(sql); }

bool PGConnect::ExecuteQueryUDT(const std::string& sql, const int& time_out) {
  if (time_out <= 0) return ExecuteQuery(sql);
  clear_result();
  if (refused(sql) || !usable()) return false;
  const long long ms = static_cast<long long>(time_out) * 1000;
  const std::string limit = std::to_string(ms > INT_MAX ? INT_MAX : ms);
  const bool own = !in_transaction();
  std::string previous;
  if (own) {
    if (!command("BEGIN")) return false;
  } else {
    Result current(exec("SELECT current_setting('statement_timeout')"));
    if (!current) return false;
    if (PQntuples(current.get()) > 0) previous = PQgetvalue(current.get(), 0, 0);
  }
  if (!command("SET LOCAL statement_timeout = " + limit)) {
    if (own) quietly("ROLLBACK");
    return false;
  }
  const bool ok = keep(sql);
  if (own) {
    if (ok && command("COMMIT")) return true;
    // A failed COMMIT (a deferred constraint) undid what the rows show.
    if (!ok) quietly("ROLLBACK");
    clear_result();
    return false;
  }
  // A statement that failed on the server aborted the caller's transaction,
  // and its rollback puts the setting back. While the transaction is still
  // usable, restore it now (unless the text itself ended the transaction).
  if (PQtransactionStatus(conn_) == PQTRANS_INTRANS) {
    const char* params[] = {previous.c_str()};
    Result r(PQexecParams(conn_, "SELECT set_config('statement_timeout', $1, true)", 1, nullptr,
                          params, nullptr, nullptr, 0));
    if (ok && (!r || PQresultStatus(r.get()) != PGRES_TUPLES_OK)) {
      clear_result();
      return fail_with(r.get());
    }
  }
  return ok;
}

bool PGConnect::ExecuteLoop(const std::string& sql) {
  clear_result();
  if (refused(sql) || !usable()) return false;
  const bool own = !in_transaction();
  if (own && !command("BEGIN")) return false;
  const int batch = loop_batch_size_;
  loop_fetch_ = "FETCH FORWARD " + std::to_string(batch) + " FROM " + kLoopCursor;
  Result first;
  if (Result(exec(
          std::string("DECLARE ") + kLoopCursor + " NO SCROLL CURSOR FOR " + single_statement(sql),
          take_params()))) {
    first.reset(fetch_loop_batch());
  }
  if (first && PQntuples(first.get()) >= batch) {
    set_result(std::make_unique<PGLoopRows>(*this, first.release(), batch, own));
    return true;
  }
  // A short first batch is the whole result: the cursor ends here.
  bool ok = first && command(std::string("CLOSE ") + kLoopCursor);
  if (own) {
    if (ok) {
      ok = command("COMMIT");
    } else {
      quietly("ROLLBACK");
    }
  }
  if (ok) set_result(std::make_unique<PGRows>(first.release()));
  return ok;
}

PGresult* PGConnect::fetch_loop_batch() { return exec(loop_fetch_); }

void PGConnect::end_loop(bool own, LoopEnd how) {
  const std::string close = std::string("CLOSE ") + kLoopCursor;
  if (how == LoopEnd::kDone) {
    const bool closed = command(close);
    if (own && closed) command("COMMIT");
    if (own && !closed) quietly("ROLLBACK");
  } else if (how == LoopEnd::kAbandoned) {
    quietly(close);
    if (own) quietly("COMMIT");
  } else if (own) {
    quietly("ROLLBACK");  // the failed fetch aborted the transaction
  }
}

bool PGConnect::ExecuteSortByCollate(const std::string& sql, const std::string& collate_name) {
  clear_result();
  if (!usable()) return false;
  if (!collate_name.empty()) {
    // A name with a NUL byte would be looked up by its prefix only.
    if (collate_name.find('\0') != std::string::npos) {
      return fail(kUndefinedObject, "collation name contains a NUL byte");
    }
    const char* params[] = {collate_name.c_str()};
    Result r(PQexecParams(conn_, "SELECT 1 FROM pg_collation WHERE collname = $1", 1, nullptr,
                          params, nullptr, nullptr, 0));
    if (!r || PQresultStatus(r.get()) != PGRES_TUPLES_OK) return fail_with(r.get());
    if (PQntuples(r.get()) == 0) {
      return fail(kUndefinedObject, "collation \"" + collate_name + "\" does not exist");
    }
  }
  return keep(sql);
}

}  // namespace tessel
