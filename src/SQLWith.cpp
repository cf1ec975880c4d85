#include "SQLWith.h"

#include "internal/Facade.h"
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
  return internal::make_dialect<PGWith, SQLiteWith, SQLServerWith, SQLWith>(db, conn);
}

std::shared_ptr<SQLWith> copy_with(tessel::DBTYPE db, const SQLWith& other) {
  return internal::make_dialect<PGWith, SQLiteWith, SQLServerWith, SQLWith>(db, other);
}

}  // namespace vexel
