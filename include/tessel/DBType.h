/// \file
/// Dialect codes reported by a host connection. The enumeration is unscoped
/// with a fixed 32-bit underlying type so that any value a host hands over
/// (including codes this library does not know) can be stored and passed on.
#ifndef TESSEL_DBTYPE_H
#define TESSEL_DBTYPE_H

#include <cstdint>

namespace tessel {

enum DBTYPE : int32_t {
  DB_SQLITE = 1,
  DB_POSTGRESQL = 2,
  DB_SQLSERVER = 3,
};

}  // namespace tessel

#endif  // TESSEL_DBTYPE_H
