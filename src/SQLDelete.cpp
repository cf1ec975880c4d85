#include "SQLDelete.h"

#include <cstring>

#include "internal/Facade.h"
#include "internal/Text.h"
#include "postgres/PGDelete.h"
#include "sqlite/SQLiteDelete.h"
#include "sqlserver/SQLServerDelete.h"

namespace vexel {

SQLDelete::SQLDelete(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
}

std::string SQLDelete::render(const Form& form) const {
  std::string_view table = table_name_.view();
  if (form.drop_schema) {
    const void* dot = std::memchr(table.data(), '.', table.size());
    if (dot != nullptr) table.remove_prefix(static_cast<const char*>(dot) - table.data() + 1);
  }
  // The keywords take 30 bytes at most.
  return internal::bounded_text(40 + table.size() + where_size() + returned_.size(),
                                [&](auto& sql) {
                                  sql.append("DELETE FROM ").append(table);
                                  put_where_returning(sql, returned_, form.output_ref);
                                });
}

bool SQLDelete::run(const Form& form, internal::ConnOp op, const internal::Site& site) {
  internal::ExecRequest request;
  request.site = site;
  request.op = op;
  const bool semicolon = form.semicolon && op != internal::ConnOp::kReturning;
  return internal::Execute(db_conn_, request,
                           [&] { return render(form) + (semicolon ? ";" : ""); });
}

void place(detail::DeleteSlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn) {
  internal::place_dialect<PGDelete, SQLiteDelete, SQLServerDelete>(slot, db, conn);
}

void place(detail::DeleteSlot& slot, tessel::DBTYPE db, const SQLDelete& other) {
  internal::place_dialect<PGDelete, SQLiteDelete, SQLServerDelete>(slot, db, other);
}

std::shared_ptr<SQLDelete> copy_delete(tessel::DBTYPE db, const SQLDelete& other) {
  return internal::make_dialect<PGDelete, SQLiteDelete, SQLServerDelete, SQLDelete>(db, other);
}

}  // namespace vexel
