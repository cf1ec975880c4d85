/// \file
/// INSERT statements, with an optional upsert, RETURNING list and a sequence
/// read after the insert. SQL Server writes RETURNING as OUTPUT and turns an
/// ON_CONFLICT insert into a MERGE of exactly one row.
///
/// \code
/// vexel::InsertBuilder ins(conn);
/// ins.INSERT_INTO(t).COLUMNS({col("a"), col("b")}).VALUES({1, "x"})
///     .ON_CONFLICT({col("a")}).SET(col("b"), col("b").EXCLUDED()).RETURNING({col("a")});
/// ins.Execute();  // returned rows stay in the connection
/// \endcode
#ifndef VEXEL_INSERTBUILDER_H
#define VEXEL_INSERTBUILDER_H

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/ImplSlot.h"
#include "vexel/SQLValue.h"
#include "vexel/SeqenceExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"

namespace vexel {

class SQLInsert;

namespace detail {
/// Room for the statement inside the builder (see ImplSlot).
constexpr std::size_t kInsertRoom = 880;
/// Where the builder keeps its statement.
using InsertSlot = ImplSlot<SQLInsert, kInsertRoom>;
}  // namespace detail

class QueryBuilder;

class CommonExpr;

/// An INSERT statement, with upsert, INSERT ... SELECT and RETURNING.
///
/// \code
/// ins.INSERT_INTO(items).COLUMNS({col("id"), col("name")})
///     .VALUES({SQLValue(1), SQLValue("a")})
///     .ON_CONFLICT({col("id")}).SET(col("name"), col("name").EXCLUDED());
/// // PostgreSQL, SQLite: "INSERT INTO shop.items(id,name) VALUES(1,'a')"
/// //                     " ON CONFLICT (id) DO UPDATE SET name = EXCLUDED.name"
/// // SQL Server: "MERGE INTO shop.items USING (VALUES(1,'a')) AS Excluded(id,name)"
/// //             " ON(shop.items.id = Excluded.id) WHEN NOT MATCHED THEN INSERT(id,name)"
/// //             " VALUES(1,'a') WHEN MATCHED THEN UPDATE SET name = EXCLUDED.name;"
/// \endcode
///
/// Columns and SET targets take bare columns (`col("id")`): a table's column
/// is written qualified ("INSERT INTO shop.items(shop.items.id)"), which
/// engines refuse.
class VEXEL_API InsertBuilder {
 public:
  /// A builder in the dialect `conn` reports.
  explicit InsertBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  /// An independent copy of the statement.
  InsertBuilder(const InsertBuilder& other);
  /// Both builders then share one statement.
  InsertBuilder& operator=(const InsertBuilder& other);
  ~InsertBuilder();

  /// Starts an empty statement.
  void Reset();
  /// On SQL Server, an ON_CONFLICT insert with other than one VALUES row
  /// throws the std::string "invaild param, values size = N" (the one
  /// exception of the library; callers catch that exact text).
  std::string tosql() const;
  /// The dialect the builder renders.
  tessel::DBTYPE db_type() const { return db_type_; }

  /// The table: "INSERT INTO shop.items".
  InsertBuilder& INSERT_INTO(const tab& t);
  ///@{
  /// The column list "(id,name)"; give bare columns.
  InsertBuilder& COLUMNS(const std::vector<col>& cols);
  InsertBuilder& COLUMNS(std::initializer_list<col> cols);
  ///@}
  ///@{
  /// Each call adds one row: PostgreSQL and SQLite "VALUES(1,'a'),(2,'b')",
  /// SQL Server "VALUES (1,'a'),(2,'b')".
  InsertBuilder& VALUES(const std::vector<SQLValue>& row);
  InsertBuilder& VALUES(std::initializer_list<SQLValue> row);
  ///@}
  /// INSERT ... SELECT: the rows come from `rows`, which takes the place of
  /// the VALUES rows: "INSERT INTO t(a,b) SELECT ...". ON_CONFLICT, SET and
  /// RETURNING work with it in every dialect (SQLite reads the SELECT from a
  /// derived table there, which its upsert needs; SQL Server's MERGE uses it
  /// as its source).
  InsertBuilder& SELECT(const QueryBuilder& rows);
  ///@{
  /// Upsert assignments, one per column; a later SET of a column replaces it.
  InsertBuilder& SET(const col& c, const SQLValue& v);
  InsertBuilder& SET(const col& c, const col& value);
  InsertBuilder& SET(const col& c, const CommonExpr& e);
  ///@}
  ///@{
  /// Makes the insert an upsert on these key columns: " ON CONFLICT (id)"; a
  /// MERGE on SQL Server.
  InsertBuilder& ON_CONFLICT(const std::vector<col>& cols);
  InsertBuilder& ON_CONFLICT(std::initializer_list<col> cols);
  ///@}
  ///@{
  /// DO NOTHING / DO UPDATE follow from whether any SET was made.
  InsertBuilder& DO_NOTHING() { return *this; }
  InsertBuilder& DO_UPDATE() { return *this; }
  ///@}
  /// A sequence read run after the insert (PostgreSQL connections only).
  InsertBuilder& EXCLUDE(const SeqenceExpr& e);
  ///@{
  /// The upsert's condition (give it together with ON_CONFLICT); AND and OR
  /// extend it without brackets.
  InsertBuilder& WHERE(const CommonExpr& condition);
  InsertBuilder& AND(const CommonExpr& condition);
  InsertBuilder& OR(const CommonExpr& condition);
  ///@}
  ///@{
  /// Also makes Execute use the connection's ExecuteReturning until Reset.
  /// PostgreSQL and SQLite "... RETURNING id"; SQL Server
  /// "INSERT INTO items(name) OUTPUT Inserted.id VALUES ('a')".
  InsertBuilder& RETURNING(const std::vector<col>& cols);
  InsertBuilder& RETURNING(std::initializer_list<col> cols);
  ///@}

  /// Lets the exception of tosql through, before anything runs.
  bool Execute();

 private:
  detail::InsertSlot ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  bool returning_ = false;
};

}  // namespace vexel

#endif  // VEXEL_INSERTBUILDER_H
