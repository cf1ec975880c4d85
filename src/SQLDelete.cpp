#include "SQLDelete.h"

#include "internal/Text.h"
#include "postgres/PGDelete.h"
#include "sqlite/SQLiteDelete.h"
#include "sqlserver/SQLServerDelete.h"

namespace vexel {

SQLDelete::SQLDelete(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
}

std::string SQLDelete::render(const Form& form) const {
  std::string table = table_name_;
  if (form.drop_schema) {
    const std::size_t dot = table.find('.');
    if (dot != std::string::npos) table = table.substr(dot + 1);
  }
  std::string returned;
  for (std::size_t i = 0; i < returning_columns_.size(); ++i) {
    if (i > 0) returned += ",";
    returned +=
        (form.output_ref != nullptr ? form.output_ref : "") + returning_columns_[i].col_name();
  }
  std::string sql = "DELETE FROM " + table;
  // SQL Server names the removed rows before the condition.
  if (form.output_ref != nullptr && !returned.empty()) sql += " OUTPUT " + returned;
  if (!where_.empty()) sql += " WHERE " + where_;
  if (form.output_ref == nullptr && !returned.empty()) sql += " RETURNING " + returned;
  return sql;
}

bool SQLDelete::run(const Form& form, internal::ConnOp op, const internal::Site& site) {
  internal::ExecRequest request;
  request.site = site;
  request.op = op;
  const bool semicolon = form.semicolon && op != internal::ConnOp::kReturning;
  return internal::Execute(db_conn_, request,
                           [&] { return render(form) + (semicolon ? ";" : ""); });
}

std::shared_ptr<SQLDelete> make_delete(tessel::DBTYPE db,
                                       const std::shared_ptr<tessel::CConnect>& conn) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteDelete>(conn);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerDelete>(conn);
    default:
      return internal::make_nothrow<PGDelete>(conn);
  }
}

std::shared_ptr<SQLDelete> copy_delete(tessel::DBTYPE db, const SQLDelete& other) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteDelete>(other);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerDelete>(other);
    default:
      return internal::make_nothrow<PGDelete>(other);
  }
}

}  // namespace vexel
