#include "tessel/SQLiteConnect.h"

#include <sqlite3.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "sqlite/BitStringFunctions.h"
#include "sqlite/RegexpFunction.h"
#include "sqlite/SQLiteRows.h"
#include "sqlite/StepClock.h"
#include "tessel/ResultRows.h"

namespace tessel {
namespace {

// How long a statement waits for a lock held by another connection.
constexpr int kBusyTimeOutMs = 5000;

struct StatementDeleter {
  void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

// True when nothing but blanks and comments is left: the statement before
// is the text's last.
bool only_blanks(const char* at, const char* end) {
  while (at < end) {
    if (*at == ' ' || (*at >= '\t' && *at <= '\r') || *at == ';') {
      ++at;
    } else if (end - at >= 2 && at[0] == '-' && at[1] == '-') {
      while (at < end && *at != '\n') ++at;
    } else if (end - at >= 2 && at[0] == '/' && at[1] == '*') {
      at += 2;
      while (at < end && !(end - at >= 2 && at[0] == '*' && at[1] == '/')) ++at;
      at = at < end ? at + 2 : end;
    } else {
      return false;
    }
  }
  return true;
}

std::vector<std::string> column_names(sqlite3_stmt* stmt, int columns) {
  std::vector<std::string> names;
  names.reserve(static_cast<size_t>(columns));
  for (int i = 0; i < columns; ++i) {
    const char* name = sqlite3_column_name(stmt, i);  // null when out of memory
    names.emplace_back(name != nullptr ? name : "");
  }
  return names;
}

std::vector<ResultRows::Value> row_values(sqlite3_stmt* stmt, int columns) {
  std::vector<ResultRows::Value> row(static_cast<size_t>(columns));
  for (int i = 0; i < columns; ++i) {
    ResultRows::Value& v = row[static_cast<size_t>(i)];
    const int type = sqlite3_column_type(stmt, i);
    v.kind = SQLiteRows::KindOf(type);
    if (type == SQLITE_INTEGER) v.whole = sqlite3_column_int64(stmt, i);
    if (type == SQLITE_FLOAT) v.real = sqlite3_column_double(stmt, i);
    const unsigned char* text = sqlite3_column_text(stmt, i);
    if (text != nullptr) {
      v.text.assign(reinterpret_cast<const char*>(text),
                    static_cast<size_t>(sqlite3_column_bytes(stmt, i)));
    }
  }
  return row;
}

}  // namespace

SQLiteConnect::SQLiteConnect(const std::string& path) {
  sqlite3* db = nullptr;
  // A connection is used by one thread at a time, so SQLite's own lock
  // around every call (taken again for each value a row reads) buys nothing.
  const int rc = sqlite3_open_v2(
      path.c_str(), &db,
      SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
  if (rc != SQLITE_OK) {
    fail(rc, std::string("cannot open database \"") + path +
                 "\": " + (db != nullptr ? sqlite3_errmsg(db) : sqlite3_errstr(rc)));
    sqlite3_close(db);
    open_error_ = last_error_;
    return;
  }
  sqlite3_extended_result_codes(db, 1);
  sqlite3_busy_timeout(db, kBusyTimeOutMs);
  int frc = sqlite_functions::RegisterRegexp(db);
  if (frc == SQLITE_OK) frc = sqlite_functions::RegisterBitStringFunctions(db);
  if (frc != SQLITE_OK) {
    fail(frc, std::string("cannot register SQL functions: ") + sqlite3_errmsg(db));
    sqlite3_close(db);
    open_error_ = last_error_;
    return;
  }
  db_ = db;
  clock_ = std::make_unique<StepClock>(db_);
}

SQLiteConnect::~SQLiteConnect() {
  // A statement still being read is finalized before the database closes.
  clear_result();
  clock_.reset();
  if (db_ != nullptr) sqlite3_close(db_);
}

bool SQLiteConnect::InTransaction() { return db_ != nullptr && sqlite3_get_autocommit(db_) == 0; }

bool SQLiteConnect::step_failed() {
  const int code = sqlite3_extended_errcode(db_);
  std::string message = sqlite3_errmsg(db_);
  if (const int limit = clock_->ExpiredLimit()) {
    message =
        "statement stopped after its time-out of " + std::to_string(limit) + " s (" + message + ")";
  }
  return fail(code, message);
}

bool SQLiteConnect::fail_read(bool no_field, const std::string& message) {
  return fail(no_field ? SQLITE_RANGE : SQLITE_MISMATCH, message);
}

bool SQLiteConnect::run(const std::string& sql, int time_out) {
  clear_result();
  if (db_ == nullptr) return fail(SQLITE_CANTOPEN, "database is not open: " + open_error_);
  // SQLite stops reading at a NUL byte and cannot get past it: the text
  // after it would be dropped silently (or never be consumed at all).
  const size_t nul = sql.find('\0');
  if (nul != std::string::npos) {
    return fail(SQLITE_ERROR, "the SQL text contains a NUL byte at offset " + std::to_string(nul));
  }
  const std::vector<Param> params = take_params();
  clock_->Start(time_out > 0 ? time_out : statement_time_out_);
  std::unique_ptr<ResultRows> kept = std::make_unique<ResultRows>();
  const char* tail = sql.c_str();
  const char* const end = tail + sql.size();
  while (tail < end) {
    sqlite3_stmt* raw = nullptr;
    const char* next = nullptr;
    int rc = sqlite3_prepare_v2(db_, tail, static_cast<int>(end - tail), &raw, &next);
    if (rc != SQLITE_OK) return fail(sqlite3_extended_errcode(db_), sqlite3_errmsg(db_));
    tail = next;
    Statement stmt(raw);
    if (!stmt) continue;  // only blanks or a comment were left
    if (!bind(raw, params)) return false;
    const int columns = sqlite3_column_count(raw);
    rc = clock_->Step(raw);
    if (rc == SQLITE_ROW && sqlite3_stmt_readonly(raw) && only_blanks(tail, end)) {
      set_result(std::make_unique<SQLiteRows>(*this, stmt.release(), column_names(raw, columns)));
      return true;
    }
    // Run to the end; the rows are kept whole in case no later statement
    // returns columns.
    std::unique_ptr<ResultRows> current;
    if (columns > 0) current = std::make_unique<ResultRows>(column_names(raw, columns));
    for (; rc == SQLITE_ROW; rc = clock_->Step(raw)) {
      if (current) current->AddRow(row_values(raw, columns));
    }
    if (rc != SQLITE_DONE) return step_failed();
    if (current) kept = std::move(current);
  }
  set_result(std::move(kept));
  return true;
}

bool SQLiteConnect::bind(sqlite3_stmt* stmt, const std::vector<Param>& params) {
  const int count = sqlite3_bind_parameter_count(stmt);
  for (int i = 1; i <= count; ++i) {
    const char* name = sqlite3_bind_parameter_name(stmt, i);
    std::size_t n = 0;
    if (name != nullptr && name[0] == '?') std::from_chars(name + 1, name + std::strlen(name), n);
    if (n < 1 || n > params.size()) {
      return fail(SQLITE_RANGE,
                  std::string("no value for the placeholder ") + (name != nullptr ? name : "?"));
    }
    const Param& p = params[n - 1];
    const char* first = p.text.data();
    const char* last = first + p.text.size();
    std::int64_t whole = 0;
    double real = 0;
    int rc = SQLITE_OK;
    if (p.kind == Param::Kind::kNull) {
      rc = sqlite3_bind_null(stmt, i);
    } else if (p.kind == Param::Kind::kBool) {
      rc = sqlite3_bind_int(stmt, i, p.text == "true" ? 1 : 0);
    } else if (p.kind == Param::Kind::kInteger && std::from_chars(first, last, whole).ptr == last) {
      rc = sqlite3_bind_int64(stmt, i, whole);
    } else if (p.kind == Param::Kind::kReal && std::from_chars(first, last, real).ptr == last) {
      rc = sqlite3_bind_double(stmt, i, real);
    } else {
      // Texts, and integers beyond 64 bits, which SQLite keeps as text.
      rc = sqlite3_bind_text(stmt, i, first, static_cast<int>(p.text.size()), SQLITE_TRANSIENT);
    }
    if (rc != SQLITE_OK) return fail(sqlite3_extended_errcode(db_), sqlite3_errmsg(db_));
  }
  return true;
}

bool SQLiteConnect::ExecuteUpdate(const std::string& sql) { return run(sql, 0); }
bool SQLiteConnect::ExecuteQuery(const std::string& sql) { return run(sql, 0); }
bool SQLiteConnect::ExecuteQueryUDT(const std::string& sql, const int& time_out) {
  return run(sql, time_out);
}
bool SQLiteConnect::ExecuteSortByCollate(const std::string& sql, const std::string&) {
  return run(sql, 0);
}
bool SQLiteConnect::ExecuteLoop(const std::string& sql) { return run(sql, 0); }
bool SQLiteConnect::ExecuteQueryContainView(const std::string& sql) { return run(sql, 0); }
bool SQLiteConnect::ExecuteReturning(const std::string& sql) { return run(sql, 0); }
bool SQLiteConnect::SeqenceExecute(const std::string& sql) { return run(sql, 0); }
bool SQLiteConnect::SeqenceExecuteManual(const std::string& sql) { return run(sql, 0); }

}  // namespace tessel
