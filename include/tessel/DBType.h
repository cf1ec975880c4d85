/// \file
/// Dialect codes reported by a host connection. The enumeration is unscoped
/// with a fixed 32-bit underlying type so that any value a host hands over
/// (including codes this library does not know) can be stored and passed on.
#ifndef TESSEL_DBTYPE_H
#define TESSEL_DBTYPE_H

#include <cstdint>

namespace tessel {

/// Dialect codes; a builder renders for the code its connection reports.
enum DBTYPE : int32_t {
  /// SQLite.
  DB_SQLITE = 1,
  /// PostgreSQL, also the default of every reference object.
  DB_POSTGRESQL = 2,
  /// Microsoft SQL Server.
  DB_SQLSERVER = 3,
};

}  // namespace tessel

#endif  // TESSEL_DBTYPE_H
