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
  std::size_t from = 0;
  if (form.drop_schema) {
    const void* dot = std::memchr(table_name_.data(), '.', table_name_.size());
    if (dot != nullptr)
      from = static_cast<std::size_t>(static_cast<const char*>(dot) - table_name_.data()) + 1;
  }
  std::string text;
  {
    internal::Fill sql(text, 40 + table_name_.size() + where_size() + returned_.size());
    sql.append("DELETE FROM ").append(table_name_, from, std::string::npos);
    put_where_returning(sql, returned_, form.output_ref);
  }
  return text;
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
