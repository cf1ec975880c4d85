#include "postgres/PGRows.h"

#include <libpq-fe.h>

#include "common/HostLog.h"
#include "tessel/PGConnect.h"

namespace tessel {
namespace {

std::vector<std::string> field_names(const PGresult* result) {
  std::vector<std::string> names;
  const int fields = result != nullptr ? PQnfields(result) : 0;
  names.reserve(static_cast<size_t>(fields));
  for (int i = 0; i < fields; ++i) {
    const char* name = PQfname(result, i);
    names.emplace_back(name != nullptr ? name : "");
  }
  return names;
}

}  // namespace

PGRows::PGRows(PGresult* result)
    : ResultSource(field_names(result)),
      result_(result),
      rows_(result != nullptr ? PQntuples(result) : 0) {}

PGRows::~PGRows() { PQclear(result_); }

bool PGRows::Next() {
  if (row_ < rows_) ++row_;
  return row_ < rows_;
}

// libpq hands every value over as text.
ValueKind PGRows::Kind(int column) const {
  return PQgetisnull(result_, row_, column) != 0 ? ValueKind::kNull : ValueKind::kText;
}

std::string_view PGRows::Text(int column) const {
  return std::string_view(PQgetvalue(result_, row_, column),
                          static_cast<size_t>(PQgetlength(result_, row_, column)));
}

void PGRows::replace(PGresult* result) {
  PQclear(result_);
  result_ = result;
  row_ = 0;
  rows_ = result != nullptr ? PQntuples(result) : 0;
}

PGLoopRows::PGLoopRows(PGConnect& owner, PGresult* first, int batch, bool own)
    : PGRows(first), owner_(owner), batch_(batch), own_(own) {}

bool PGLoopRows::Next() {
  if (!AtRow()) return false;
  if (!last_of_batch() || !open_) return PGRows::Next();
  PGresult* next = owner_.fetch_loop_batch();
  replace(next);
  if (next == nullptr) {
    host::LogLine(5, "tessel::PGConnect::MoveNext", __FILE__, __LINE__,
                  "the result ended early: " + owner_.last_error_);
    finish(LoopEnd::kFailed);
    return false;
  }
  // A short batch is the last one.
  if (batch_rows() < batch_) finish(LoopEnd::kDone);
  return AtRow();
}

void PGLoopRows::finish(LoopEnd how) {
  if (!open_) return;
  open_ = false;
  owner_.end_loop(own_, how);
}

}  // namespace tessel
