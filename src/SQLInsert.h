// Implementation base of InsertBuilder: the statement's parts (columns and
// values rendered at tosql time, expressions when given) and the two
// renderers: the INSERT ... ON CONFLICT form of PostgreSQL and SQLite, and
// SQL Server's INSERT ... OUTPUT / MERGE form.
#ifndef VEXEL_SQLINSERT_H
#define VEXEL_SQLINSERT_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "internal/Execution.h"
#include "internal/ShortText.h"
#include "internal/Text.h"
#include "internal/TextMap.h"
#include "internal/WhereClause.h"
#include "tessel/CConnect.h"
#include "vexel/InsertBuilder.h"
#include "vexel/SQLValue.h"
#include "vexel/col.h"

namespace vexel {

class SQLInsert : public internal::WhereClause {
 public:
  explicit SQLInsert(const std::shared_ptr<tessel::CConnect>& conn);
  SQLInsert(const SQLInsert&) = default;
  SQLInsert& operator=(const SQLInsert&) = delete;

  virtual std::string tosql() const = 0;
  virtual bool Execute() = 0;
  virtual bool ExecuteQuery() = 0;
  virtual bool ExecuteReturning() = 0;

  tessel::DBTYPE db_type() const { return db_type_; }

  // Where an execution goes on the connection.
  struct RunForm {
    internal::ConnOp op;
    bool query_error;   // the main statement's error comes from GetLastQueryError
    bool read_exclude;  // then run "SELECT " + exclude_ + ";"
  };

  // Columns are given with the dialect they render in, and kept as text.
  // The table's text, written in place.
  internal::ShortText<48>& INSERT_INTO() { return table_name_; }
  void COLUMNS(internal::Span<col> cols, tessel::DBTYPE db);
  void VALUES(internal::Span<SQLValue> row);
  void SELECT(const std::string& query) { select_ = query; }
  void SET(const col& c, tessel::DBTYPE db, std::string_view value_text);
  void ON_CONFLICT(internal::Span<col> cols, tessel::DBTYPE db);
  void EXCLUDE(const std::string& text) { exclude_ = text; }
  void RETURNING(internal::Span<col> cols, tessel::DBTYPE db);

 protected:
  ~SQLInsert() = default;

  std::string upsert_text() const;
  // Throws the std::string "invaild param, values size = N" for a MERGE
  // whose VALUES rows are not exactly one.
  std::string sqlserver_text() const;
  void write_upsert(internal::Fill& sql) const;
  void write_sqlserver(internal::Fill& sql) const;
  void write_merge_select(internal::Fill& sql) const;
  void put_merge_tail(internal::Fill& sql, std::string_view inserted) const;
  bool run(const RunForm& form, const internal::Site& site);

 private:
  // The VALUES rows as text, "(a,b),(c,d)", and how many there are.
  internal::ShortText<64> rows_;
  std::size_t row_count_ = 0;
  std::string select_;            // INSERT ... SELECT, in place of the rows
  std::string columns_;           // "a,b"
  std::string excluded_columns_;  // "Excluded.a,Excluded.b", for a MERGE from a query
  internal::ShortText<48> table_name_;
  internal::ColumnTexts conflict_columns_;
  internal::ColumnTexts returning_columns_;
  // By column text: SET targets render in that order.
  internal::TextMap set_values_;
  std::string exclude_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  std::shared_ptr<tessel::CConnect> db_conn_;
};

// The implementation for `db` (see internal::place_dialect) built in a
// builder's slot, from a connection or as a copy of `other`.
void place(detail::InsertSlot& slot, tessel::DBTYPE db,
           const std::shared_ptr<tessel::CConnect>& conn);
void place(detail::InsertSlot& slot, tessel::DBTYPE db, const SQLInsert& other);
// A copy of `other` on the heap, for builders that share it; null if
// allocation fails.
std::shared_ptr<SQLInsert> copy_insert(tessel::DBTYPE db, const SQLInsert& other);

}  // namespace vexel

#endif  // VEXEL_SQLINSERT_H
