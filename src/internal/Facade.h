// The life cycle that every builder facade shares: the dialect taken from
// the connection, the implementation of a copy, and the check for a missing
// implementation with its log line.
#ifndef VEXEL_INTERNAL_FACADE_H
#define VEXEL_INTERNAL_FACADE_H

#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "internal/Log.h"
#include "tessel/CConnect.h"
#include "vexel/ImplSlot.h"

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

// The same for a facade that keeps its implementation in a slot: `place`
// builds the class of `db` in it, from a connection or as a copy.
template <typename Impl, std::size_t N>
void copy_or_fresh(tessel::DBTYPE& db, detail::ImplSlot<Impl, N>& to,
                   const detail::ImplSlot<Impl, N>& from) {
  if (from) {
    place(to, db, *from.get());
    return;
  }
  db = tessel::DB_POSTGRESQL;
  place(to, db, std::shared_ptr<tessel::CConnect>());
}

// The implementation class chosen for a dialect: SQLite for 1, SQL Server
// for 3, PostgreSQL for 2 and every other code, handed to `f` as a
// Dialect<Class>.
template <typename T>
struct Dialect {
  using type = T;
};
template <typename PG, typename Lite, typename Server, typename F>
decltype(auto) for_dialect(tessel::DBTYPE db, F&& f) {
  switch (db) {
    case tessel::DB_SQLITE:
      return f(Dialect<Lite>{});
    case tessel::DB_SQLSERVER:
      return f(Dialect<Server>{});
    default:
      return f(Dialect<PG>{});
  }
}

// Allocates an implementation object; null when memory runs out, which the
// facades report instead of throwing.
template <typename T, typename... Args>
std::shared_ptr<T> make_nothrow(Args&&... args) {
  try {
    return std::make_shared<T>(std::forward<Args>(args)...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// The class of `db` built in `slot` from `arg` ...
template <typename PG, typename Lite, typename Server, typename Slot, typename Arg>
void place_dialect(Slot& slot, tessel::DBTYPE db, const Arg& arg) {
  for_dialect<PG, Lite, Server>(
      db, [&](auto d) { slot.template emplace<typename decltype(d)::type>(arg); });
}

// ... or on the heap, null when memory runs out.
template <typename PG, typename Lite, typename Server, typename Impl, typename Arg>
std::shared_ptr<Impl> make_dialect(tessel::DBTYPE db, const Arg& arg) {
  return for_dialect<PG, Lite, Server>(db, [&](auto d) -> std::shared_ptr<Impl> {
    return make_nothrow<typename decltype(d)::type>(arg);
  });
}

void log_no_implementation(const Site& site);

// Null, after "ptr_builder_ is nullptr" at level 5 on behalf of `site`.
template <typename Impl>
Impl* missing(const Site& site) {
  log_no_implementation(site);
  return nullptr;
}

}  // namespace internal
}  // namespace vexel

// The calling facade operation's implementation, or null after the
// "ptr_builder_ is nullptr" line under the caller's name.
// The site is only made on the way to the log line.
#define VEXEL_IMPL()                                                                               \
  (ptr_builder_ ? ptr_builder_.get()                                                               \
                : ::vexel::internal::missing<std::remove_pointer_t<decltype(ptr_builder_.get())>>( \
                      VEXEL_SITE))

#endif  // VEXEL_INTERNAL_FACADE_H
