#include "SQLInsert.h"

#include "internal/Facade.h"
#include "internal/Text.h"
#include "postgres/PGInsert.h"
#include "sqlite/SQLiteInsert.h"
#include "sqlserver/SQLServerInsert.h"
#include "vexel/SQLExpr.h"

namespace vexel {

SQLInsert::SQLInsert(const std::shared_ptr<tessel::CConnect>& conn) : db_conn_(conn) {
  if (db_conn_) db_type_ = db_conn_->GetDBType();
}

void SQLInsert::COLUMNS(internal::Span<col> cols, tessel::DBTYPE db) {
  columns_.clear();
  excluded_columns_.clear();
  // Only a MERGE reads the source columns.
  const bool merges = db == tessel::DB_SQLSERVER || db_type_ == tessel::DB_SQLSERVER;
  for (std::size_t i = 0; i < cols.size(); ++i) {
    if (i > 0) columns_ += ',';
    const std::size_t from = columns_.size();
    internal::ColumnText::append(columns_, cols[i], db);
    if (!merges) continue;
    if (i > 0) excluded_columns_ += ',';
    excluded_columns_.append("Excluded.").append(columns_, from, std::string::npos);
  }
}

void SQLInsert::VALUES(internal::Span<SQLValue> row) {
  std::string scratch;
  const auto write = [&](auto& sink) {
    if (row_count_ > 0) sink.put(',');
    sink.put('(');
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) sink.put(',');
      const std::string_view text = internal::ValueText::view(row[i], db_type_, scratch);
      sink.put(text.data(), text.size());
    }
    sink.put(')');
  };
  // A row of values that hold their text is put together on the stack and
  // appended in one piece.
  std::size_t size = row.size() + 2;
  for (const SQLValue& v : row) {
    const std::string* text = internal::ValueText::fixed(v);
    size = text != nullptr && size < 256 ? size + text->size() : std::string::npos;
  }
  char small[256];
  if (size <= sizeof small) {
    internal::Into into{small};
    write(into);
    rows_.append(small, into.size());
  } else {
    write(rows_);
  }
  ++row_count_;
}

void SQLInsert::SET(const col& c, tessel::DBTYPE db, std::string_view value_text) {
  set_values_.set(c, db, value_text);
}

void SQLInsert::ON_CONFLICT(internal::Span<col> cols, tessel::DBTYPE db) {
  conflict_columns_.clear();
  conflict_columns_.add(cols, db);
}

void SQLInsert::RETURNING(internal::Span<col> cols, tessel::DBTYPE db) {
  returning_columns_.clear();
  returning_columns_.add(cols, db);
}

std::string SQLInsert::upsert_text() const {
  std::string text;
  {
    internal::Fill sql(text, 64 + table_name_.size() + columns_.size() + rows_.size() +
                                 where_size() + conflict_columns_.size() +
                                 returning_columns_.size() + 32 * set_values_.size());
    write_upsert(sql);
  }
  return text;
}

void SQLInsert::write_upsert(internal::Fill& sql) const {
  // No blank before "(" nor after " VALUES": hosts compare the text.
  sql.append("INSERT INTO ").append(table_name_.view()).append("(").append(columns_).append(")");
  if (select_.empty()) {
    sql.append(" VALUES").append(rows_.view());
  } else if (db_type_ == tessel::DB_SQLITE && !conflict_columns_.empty()) {
    // SQLite reads "ON CONFLICT" after a bare SELECT as a join's ON.
    sql.append(" SELECT * FROM (").append(select_).append(") WHERE true");
  } else {
    sql.append(" ").append(select_);
  }
  if (!conflict_columns_.empty()) {
    sql += " ON CONFLICT (";
    conflict_columns_.put(sql, "");
    sql += ")";
    if (set_values_.empty()) {
      sql += " DO NOTHING ";  // the trailing blank is part of the known text
    } else {
      sql += " DO UPDATE SET ";
      for (const auto& entry : set_values_) {
        sql.append(entry.first).append(" = ").append(entry.second).append(", ");
      }
      sql.drop(2);
    }
  }
  // Lands behind the VALUES list even without a conflict clause.
  put_where(sql);
  if (!returning_columns_.empty()) {
    sql += " RETURNING ";
    returning_columns_.put(sql, "");
  }
}

std::string SQLInsert::sqlserver_text() const {
  std::string text;
  {
    internal::Fill sql(text, 96 + 2 * (table_name_.size() + columns_.size() + rows_.size()) +
                                 2 * (conflict_columns_.size() + returning_columns_.size()) +
                                 48 * set_values_.size());
    write_sqlserver(sql);
  }
  return text;
}

void SQLInsert::write_sqlserver(internal::Fill& sql) const {
  if (conflict_columns_.empty()) {
    sql.append("INSERT INTO ").append(table_name_.view()).append("(").append(columns_).append(")");
    // Capital "Inserted." here, "inserted." in MERGE: both are what hosts expect.
    if (!returning_columns_.empty()) {
      sql += " OUTPUT ";
      returning_columns_.put(sql, "Inserted.");
    }
    if (select_.empty()) {
      sql.append(" VALUES ").append(rows_.view());
    } else {
      sql.append(" ").append(select_);
    }
    return;
  }
  if (!select_.empty()) {
    write_merge_select(sql);
    return;
  }
  if (row_count_ != 1) {
    // The one exception the library throws, and a std::string at that:
    // callers catch this exact text, misspelling included.
    throw std::string("invaild param, values size = ") + std::to_string(row_count_);
  }
  sql.append("MERGE INTO ").append(table_name_.view());
  sql.append(" USING (VALUES")
      .append(rows_.view())
      .append(") AS Excluded(")
      .append(columns_)
      .append(")");
  put_merge_tail(sql, rows_.view());
}

// From " ON(" on: the match, the insert of `inserted`, the update and the
// returned columns.
void SQLInsert::put_merge_tail(internal::Fill& sql, std::string_view inserted) const {
  sql += " ON(";
  for (std::size_t i = 0; i < conflict_columns_.count(); ++i) {
    if (i > 0) sql += " AND ";
    const std::string_view name = conflict_columns_[i];
    sql.append(table_name_.view()).append(".").put(name.data(), name.size());
    sql.append(" = Excluded.").put(name.data(), name.size());
  }
  sql += ")";
  sql.append(" WHEN NOT MATCHED THEN INSERT(").append(columns_).append(") VALUES").append(inserted);
  if (!set_values_.empty()) {
    sql += " WHEN MATCHED THEN UPDATE SET ";
    bool first = true;
    for (const auto& entry : set_values_) {
      if (!first) sql += ",";
      first = false;
      sql.append(entry.first).append(" = ").append(entry.second);
    }
  }
  if (!returning_columns_.empty()) {
    sql += " OUTPUT ";
    returning_columns_.put(sql, "inserted.");
  }
  sql += ";";
}

// A MERGE whose source is a query: its rows arrive as Excluded.
void SQLInsert::write_merge_select(internal::Fill& sql) const {
  sql.append("MERGE INTO ").append(table_name_.view());
  sql.append(" USING (").append(select_).append(") AS Excluded(").append(columns_).append(")");
  put_merge_tail(sql, "(" + excluded_columns_ + ")");
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

void place(detail::InsertSlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn) {
  internal::place_dialect<PGInsert, SQLiteInsert, SQLServerInsert>(slot, db, conn);
}

void place(detail::InsertSlot& slot, tessel::DBTYPE db, const SQLInsert& other) {
  internal::place_dialect<PGInsert, SQLiteInsert, SQLServerInsert>(slot, db, other);
}

std::shared_ptr<SQLInsert> copy_insert(tessel::DBTYPE db, const SQLInsert& other) {
  return internal::make_dialect<PGInsert, SQLiteInsert, SQLServerInsert, SQLInsert>(db, other);
}

}  // namespace vexel
