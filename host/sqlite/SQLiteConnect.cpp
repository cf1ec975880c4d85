#include "tessel/SQLiteConnect.h"

#include <sqlite3.h>

#include <chrono>
#include <utility>
#include <vector>

#include "sqlite/BitStringFunctions.h"
#include "sqlite/RegexpFunction.h"

namespace tessel {
namespace {

using Clock = std::chrono::steady_clock;

// Virtual-machine instructions between two deadline checks: often enough to
// stop within milliseconds, rarely enough to cost nothing measurable.
constexpr int kProgressInterval = 1000;
// How long a statement waits for a lock held by another connection.
constexpr int kBusyTimeOutMs = 5000;

struct Deadline {
  Clock::time_point at;
  bool expired = false;
};

int check_deadline(void* p) {
  auto* deadline = static_cast<Deadline*>(p);
  if (Clock::now() < deadline->at) return 0;
  deadline->expired = true;
  return 1;  // non-zero interrupts the statement
}

std::string column_text(sqlite3_stmt* stmt, int i) {
  const unsigned char* text = sqlite3_column_text(stmt, i);
  if (text == nullptr) return std::string();  // NULL reads as ""
  return std::string(reinterpret_cast<const char*>(text),
                     static_cast<size_t>(sqlite3_column_bytes(stmt, i)));
}

}  // namespace

SQLiteConnect::SQLiteConnect(const std::string& path) {
  sqlite3* db = nullptr;
  const int rc = sqlite3_open_v2(
      path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI, nullptr);
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
}

SQLiteConnect::~SQLiteConnect() {
  // Every statement is finalized before its operation returns.
  if (db_ != nullptr) sqlite3_close(db_);
}

bool SQLiteConnect::run(const std::string& sql, int time_out) {
  rows_.Clear();
  if (db_ == nullptr) return fail(SQLITE_CANTOPEN, "database is not open: " + open_error_);
  // SQLite stops reading at a NUL byte and cannot get past it: the text
  // after it would be dropped silently (or never be consumed at all).
  const size_t nul = sql.find('\0');
  if (nul != std::string::npos) {
    return fail(SQLITE_ERROR, "the SQL text contains a NUL byte at offset " + std::to_string(nul));
  }
  if (time_out <= 0) time_out = statement_time_out_;
  Deadline deadline;
  if (time_out > 0) {
    deadline.at = Clock::now() + std::chrono::seconds(time_out);
    sqlite3_progress_handler(db_, kProgressInterval, check_deadline, &deadline);
  }
  // Removes the handler on every way out: it points at this frame.
  struct HandlerGuard {
    sqlite3* db;
    bool active;
    ~HandlerGuard() {
      if (active) sqlite3_progress_handler(db, 0, nullptr, nullptr);
    }
  } guard{db_, time_out > 0};

  ResultRows kept;
  const char* tail = sql.c_str();
  const char* const end = tail + sql.size();
  while (tail < end) {
    sqlite3_stmt* stmt = nullptr;
    const char* next = nullptr;
    int rc = sqlite3_prepare_v2(db_, tail, static_cast<int>(end - tail), &stmt, &next);
    if (rc != SQLITE_OK) return fail(sqlite3_extended_errcode(db_), sqlite3_errmsg(db_));
    tail = next;
    if (stmt == nullptr) continue;  // only blanks or a comment were left
    const int columns = sqlite3_column_count(stmt);
    ResultRows current;
    if (columns > 0) {
      std::vector<std::string> names;
      names.reserve(static_cast<size_t>(columns));
      for (int i = 0; i < columns; ++i) {
        const char* name = sqlite3_column_name(stmt, i);  // null when out of memory
        names.emplace_back(name != nullptr ? name : "");
      }
      current.SetColumns(std::move(names));
    }
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
      std::vector<std::string> row;
      row.reserve(static_cast<size_t>(columns));
      for (int i = 0; i < columns; ++i) row.push_back(column_text(stmt, i));
      current.AddRow(std::move(row));
    }
    if (rc != SQLITE_DONE) {
      const int code = sqlite3_extended_errcode(db_);
      std::string message = sqlite3_errmsg(db_);
      sqlite3_finalize(stmt);
      if (deadline.expired) {
        message.insert(
            0, "statement stopped after its time-out of " + std::to_string(time_out) + " s (");
        message += ")";
      }
      return fail(code, message);
    }
    sqlite3_finalize(stmt);
    if (columns > 0) kept = std::move(current);
  }
  rows_ = std::move(kept);
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
