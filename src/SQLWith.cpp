#include "SQLWith.h"

#include "internal/Text.h"
#include "postgres/PGWith.h"
#include "sqlite/SQLiteWith.h"
#include "sqlserver/SQLServerWith.h"

namespace vexel {

SQLWith::SQLWith(const std::shared_ptr<tessel::CConnect>& conn)
    : db_conn_(conn), db_type_(conn ? conn->GetDBType() : tessel::DB_POSTGRESQL) {}

// Named statements are separated by a bare ",", and the blank before the
// main statement is written even when it is empty: hosts match the text.
std::string SQLWith::render() const {
  std::string list;
  for (const auto& named : named_) {
    if (!list.empty()) list += ",";
    list += named.first + " AS (" + named.second + ")";
  }
  return std::string("WITH ") + (recursive_ ? "RECURSIVE " : "") + list + " " + main_;
}

bool SQLWith::run(const internal::QueryRoutes& routes, internal::QueryVariant variant,
                  const internal::Site& site, int time_out, const std::string& collate_name) {
  return internal::ExecuteQuery(db_conn_, routes, variant, site, time_out, collate_name,
                                [this] { return tosql(); });
}

std::shared_ptr<SQLWith> make_with(tessel::DBTYPE db,
                                   const std::shared_ptr<tessel::CConnect>& conn) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteWith>(conn);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerWith>(conn);
    default:
      return internal::make_nothrow<PGWith>(conn);
  }
}

std::shared_ptr<SQLWith> copy_with(tessel::DBTYPE db, const SQLWith& other) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteWith>(other);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerWith>(other);
    default:
      return internal::make_nothrow<PGWith>(other);
  }
}

}  // namespace vexel
