// The rows of a PostgreSQL result read where libpq keeps them: no copy of
// the values is made. PGLoopRows holds one batch of a server-side cursor at
// a time and fetches the next when the reader gets past the last.
#ifndef TESSEL_HOST_PGROWS_H
#define TESSEL_HOST_PGROWS_H

#include <string>

#include "tessel/ResultSource.h"

struct pg_result;

namespace tessel {

class PGConnect;

// How a loop cursor ends: its last batch read, a fetch failed, or the
// reader left it for another operation of the connection.
enum class LoopEnd : int { kDone, kFailed, kAbandoned };

class PGRows : public ResultSource {
 public:
  // Takes over `result` (any status; one without rows reads as empty).
  explicit PGRows(pg_result* result);
  ~PGRows() override;

  bool AtRow() const override { return row_ < rows_; }
  bool Next() override;
  ValueKind Kind(int column) const override;
  std::string_view Text(int column) const override;

 protected:
  // Reads the rows of `result` (the next batch, same columns) instead.
  void replace(pg_result* result);
  bool last_of_batch() const { return row_ + 1 >= rows_; }
  int batch_rows() const { return rows_; }

 private:
  pg_result* result_;
  int row_ = 0;
  int rows_ = 0;
};

class PGLoopRows : public PGRows {
 public:
  // `first`: the first batch, a full one, of the connection's loop cursor,
  // fetched `batch` rows at a time; `own`: the loop runs in a transaction of
  // its own.
  PGLoopRows(PGConnect& owner, pg_result* first, int batch, bool own);
  ~PGLoopRows() override { Close(); }

  bool Next() override;
  void Close() override { finish(LoopEnd::kAbandoned); }

 private:
  void finish(LoopEnd how);

  PGConnect& owner_;
  int batch_;
  bool own_;
  bool open_ = true;
};

}  // namespace tessel

#endif  // TESSEL_HOST_PGROWS_H
