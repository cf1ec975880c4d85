#include "vexel/quote_name.h"

#include "internal/Quote.h"

namespace vexel {

std::string quote_name(const std::string& name, tessel::DBTYPE db) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::sqlite_ident(name);
    case tessel::DB_SQLSERVER:
      return internal::sqlserver_ident(name);
    default:
      return internal::pg_ident(name);
  }
}

}  // namespace vexel
