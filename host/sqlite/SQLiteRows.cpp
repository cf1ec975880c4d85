#include "sqlite/SQLiteRows.h"

#include <sqlite3.h>

#include <utility>

#include "common/HostLog.h"
#include "sqlite/StepClock.h"
#include "tessel/SQLiteConnect.h"

namespace tessel {

SQLiteRows::SQLiteRows(SQLiteConnect& owner, sqlite3_stmt* stmt, std::vector<std::string> names)
    : ResultSource(std::move(names)), owner_(owner), stmt_(stmt) {}

bool SQLiteRows::Next() {
  if (stmt_ == nullptr) return false;
  const int rc = owner_.clock_->Step(stmt_);
  if (rc == SQLITE_ROW) return true;
  if (rc != SQLITE_DONE) {
    owner_.step_failed();
    host::LogLine(5, "tessel::SQLiteConnect::MoveNext", __FILE__, __LINE__,
                  "the result ended early: " + owner_.last_error_);
  }
  Close();
  return false;
}

void SQLiteRows::Close() {
  sqlite3_finalize(stmt_);
  stmt_ = nullptr;
}

ValueKind SQLiteRows::KindOf(int type) {
  switch (type) {
    case SQLITE_NULL:
      return ValueKind::kNull;
    case SQLITE_INTEGER:
      return ValueKind::kInt;
    case SQLITE_FLOAT:
      return ValueKind::kDouble;
    default:
      return ValueKind::kText;  // text and blobs
  }
}

ValueKind SQLiteRows::Kind(int column) const { return KindOf(sqlite3_column_type(stmt_, column)); }

std::string_view SQLiteRows::Text(int column) const {
  const unsigned char* text = sqlite3_column_text(stmt_, column);
  if (text == nullptr) return std::string_view();  // NULL, or out of memory
  return std::string_view(reinterpret_cast<const char*>(text),
                          static_cast<size_t>(sqlite3_column_bytes(stmt_, column)));
}

int64_t SQLiteRows::Int(int column) const { return sqlite3_column_int64(stmt_, column); }

double SQLiteRows::Double(int column) const { return sqlite3_column_double(stmt_, column); }

}  // namespace tessel
