#include "SQLInsert.h"

#include "internal/Text.h"
#include "postgres/PGInsert.h"
#include "sqlite/SQLiteInsert.h"
#include "sqlserver/SQLServerInsert.h"
#include "vexel/SQLExpr.h"

namespace vexel {
namespace {

// Lists in insert statements are joined by a bare ",".
std::string names(const std::vector<col>& cols, const char* prefix = "") {
  std::string text;
  for (std::size_t i = 0; i < cols.size(); ++i) {
    if (i > 0) text += ",";
    text += prefix + cols[i].col_name();
  }
  return text;
}

std::string row_text(const std::vector<SQLValue>& row) {
  std::string text = "(";
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (i > 0) text += ",";
    text += SQLExpr(row[i]).ToExpr();
  }
  return text + ")";
}

std::string rows_text(const std::vector<std::vector<SQLValue>>& rows) {
  std::string text;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (i > 0) text += ",";
    text += row_text(rows[i]);
  }
  return text;
}

}  // namespace

SQLInsert::SQLInsert(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
}

std::string SQLInsert::upsert_text() const {
  // No blank before "(" nor after " VALUES": hosts compare the text.
  std::string sql = "INSERT INTO " + table_name_ + "(" + names(columns_) + ")";
  sql += " VALUES" + rows_text(values_);
  if (!conflict_columns_.empty()) {
    sql += " ON CONFLICT (" + names(conflict_columns_) + ")";
    if (set_values_.empty()) {
      sql += " DO NOTHING ";  // the trailing blank is part of the known text
    } else {
      sql += " DO UPDATE SET ";
      for (const auto& entry : set_values_) {
        sql += entry.first.col_name() + " = " + entry.second + ", ";
      }
      sql.resize(sql.size() - 2);
    }
  }
  // Lands behind the VALUES list even without a conflict clause.
  if (!where_.empty()) sql += " WHERE " + where_;
  if (!returning_columns_.empty()) sql += " RETURNING " + names(returning_columns_);
  return sql;
}

std::string SQLInsert::sqlserver_text() const {
  std::string sql;
  if (conflict_columns_.empty()) {
    sql = "INSERT INTO " + table_name_ + "(" + names(columns_) + ")";
    // Capital "Inserted." here, "inserted." in MERGE: both are what hosts expect.
    if (!returning_columns_.empty()) sql += " OUTPUT " + names(returning_columns_, "Inserted.");
    sql += " VALUES " + rows_text(values_);
    return sql;
  }
  if (values_.size() != 1) {
    // The one exception the library throws, and a std::string at that:
    // callers catch this exact text, misspelling included.
    throw std::string("invaild param, values size = ") + std::to_string(values_.size());
  }
  const std::string row = row_text(values_.front());
  const std::string cols = names(columns_);
  sql = "MERGE INTO " + table_name_;
  sql += " USING (VALUES" + row + ") AS Excluded(" + cols + ")";
  sql += " ON(";
  for (std::size_t i = 0; i < conflict_columns_.size(); ++i) {
    if (i > 0) sql += " AND ";
    const std::string name = conflict_columns_[i].col_name();
    sql.append(table_name_).append(".").append(name).append(" = Excluded.").append(name);
  }
  sql += ")";
  sql += " WHEN NOT MATCHED THEN INSERT(" + cols + ") VALUES" + row;
  if (!set_values_.empty()) {
    sql += " WHEN MATCHED THEN UPDATE SET ";
    bool first = true;
    for (const auto& entry : set_values_) {
      if (!first) sql += ",";
      first = false;
      sql += entry.first.col_name() + " = " + entry.second;
    }
  }
  if (!returning_columns_.empty()) sql += " OUTPUT " + names(returning_columns_, "inserted.");
  sql += ";";
  return sql;
}

bool SQLInsert::run(const RunForm& form, const internal::Site& site) {
  if (!db_conn_) {
    VEXEL_LOG_AT(site, 5, "[%s]db_conn_ is nullptr.[%s(%d)]");
    return false;
  }
  // A malformed SQL Server MERGE throws from here to the caller.
  const std::string sql = tosql();
  internal::ExecRequest request;
  request.site = site;
  request.op = form.op;
  request.query_error = form.query_error;
  if (!internal::Run(*db_conn_, request, sql)) return false;
  if (!form.read_exclude || exclude_.empty()) return true;
  // The host reads the sequence value from this result; the insert stays.
  request.op = internal::ConnOp::kQuery;
  request.query_error = false;
  return internal::Run(*db_conn_, request, "SELECT " + exclude_ + ";");
}

std::shared_ptr<SQLInsert> make_insert(tessel::DBTYPE db,
                                       const std::shared_ptr<tessel::CConnect>& conn) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteInsert>(conn);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerInsert>(conn);
    default:
      return internal::make_nothrow<PGInsert>(conn);
  }
}

std::shared_ptr<SQLInsert> copy_insert(tessel::DBTYPE db, const SQLInsert& other) {
  switch (db) {
    case tessel::DB_SQLITE:
      return internal::make_nothrow<SQLiteInsert>(other);
    case tessel::DB_SQLSERVER:
      return internal::make_nothrow<SQLServerInsert>(other);
    default:
      return internal::make_nothrow<PGInsert>(other);
  }
}

}  // namespace vexel
