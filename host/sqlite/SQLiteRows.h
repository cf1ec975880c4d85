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
  ValueKind Kind(int column) const override;
  std::string_view Text(int column) const override;
  int64_t Int(int column) const override;
  double Double(int column) const override;
  // The kind of a value of SQLite's fundamental `type`.
  static ValueKind KindOf(int type);

 private:
  SQLiteConnect& owner_;
  sqlite3_stmt* stmt_;
};

}  // namespace tessel

#endif  // TESSEL_HOST_SQLITEROWS_H
