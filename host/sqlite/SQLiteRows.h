// The rows of a SQLite statement read as it steps: the values of the
// current row are read from the statement itself, so memory stays the same
// whatever the number of rows.
#ifndef TESSEL_HOST_SQLITEROWS_H
#define TESSEL_HOST_SQLITEROWS_H

#include <string>
#include <vector>

#include "tessel/ResultSource.h"

struct sqlite3_stmt;

namespace tessel {

class SQLiteConnect;

class SQLiteRows : public ResultSource {
 public:
  // Takes over `stmt`, stepped to its first row.
  SQLiteRows(SQLiteConnect& owner, sqlite3_stmt* stmt, std::vector<std::string> names);
  ~SQLiteRows() override { Close(); }

  bool AtRow() const override { return stmt_ != nullptr; }
  bool Next() override;
  void Close() override;
  bool IsNull(int column) const override;
  std::string_view Text(int column) const override;
  bool NativeInt(int column, int64_t& value) const override;
  bool NativeDouble(int column, double& value) const override;

 private:
  SQLiteConnect& owner_;
  sqlite3_stmt* stmt_;
};

}  // namespace tessel

#endif  // TESSEL_HOST_SQLITEROWS_H
