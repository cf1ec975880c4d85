// The life cycle that every builder facade shares: the dialect taken from
// the connection, the implementation of a copy, and the check for a missing
// implementation with its log line.
#ifndef VEXEL_INTERNAL_FACADE_H
#define VEXEL_INTERNAL_FACADE_H

#include <memory>

#include "internal/Log.h"
#include "tessel/CConnect.h"

namespace vexel {
namespace internal {

// The connection's dialect, 2 when there is no connection.
inline tessel::DBTYPE dialect_of(const std::shared_ptr<tessel::CConnect>& conn) {
  return conn ? conn->GetDBType() : tessel::DB_POSTGRESQL;
}

// The same, logging "db_conn is nullptr" at level 6 on behalf of `site` when
// there is no connection (constructors and Reset of the logging facades).
tessel::DBTYPE dialect_or_log(const std::shared_ptr<tessel::CConnect>& conn, const Site& site);

// The implementation of a copy-constructed facade: `other` copied into the
// class of `db`, or, when `other` has none, a fresh PostgreSQL one without a
// connection (`db` then becomes 2).
template <typename Impl>
std::shared_ptr<Impl> copy_or_fresh(
    tessel::DBTYPE& db, const std::shared_ptr<Impl>& other,
    std::shared_ptr<Impl> (*copy)(tessel::DBTYPE, const Impl&),
    std::shared_ptr<Impl> (*make)(tessel::DBTYPE, const std::shared_ptr<tessel::CConnect>&)) {
  if (other) return copy(db, *other);
  db = tessel::DB_POSTGRESQL;
  return make(db, nullptr);
}

void log_no_implementation(const Site& site);

// `p`, or null after "ptr_builder_ is nullptr" at level 5 on behalf of `site`.
template <typename Impl>
Impl* checked(const std::shared_ptr<Impl>& p, const Site& site) {
  if (!p) log_no_implementation(site);
  return p.get();
}

}  // namespace internal
}  // namespace vexel

// The calling facade operation's implementation, or null after the
// "ptr_builder_ is nullptr" line under the caller's name.
#define VEXEL_IMPL() ::vexel::internal::checked(ptr_builder_, VEXEL_SITE)

#endif  // VEXEL_INTERNAL_FACADE_H
