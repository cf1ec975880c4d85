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

#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/SQLValue.h"
#include "vexel/SeqenceExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"

namespace vexel {

class QueryBuilder;

class CommonExpr;
class SQLInsert;

class VEXEL_API InsertBuilder {
 public:
  explicit InsertBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  InsertBuilder(const InsertBuilder& other);
  /// Both builders then share one statement.
  InsertBuilder& operator=(const InsertBuilder& other);
  ~InsertBuilder();

  void Reset();
  /// On SQL Server, an ON_CONFLICT insert with other than one VALUES row
  /// throws the std::string "invaild param, values size = N" (the one
  /// exception of the library; callers catch that exact text).
  std::string tosql() const;
  tessel::DBTYPE db_type() const { return db_type_; }

  InsertBuilder& INSERT_INTO(const tab& t);
  InsertBuilder& COLUMNS(const std::vector<col>& cols);
  /// Each call adds one row.
  InsertBuilder& VALUES(const std::vector<SQLValue>& row);
  /// INSERT ... SELECT: the rows come from `rows`, which takes the place of
  /// the VALUES rows: "INSERT INTO t(a,b) SELECT ...". ON_CONFLICT, SET and
  /// RETURNING work with it in every dialect (SQLite reads the SELECT from a
  /// derived table there, which its upsert needs; SQL Server's MERGE uses it
  /// as its source).
  InsertBuilder& SELECT(const QueryBuilder& rows);
  /// Upsert assignments, one per column; a later SET of a column replaces it.
  InsertBuilder& SET(const col& c, const SQLValue& v);
  InsertBuilder& SET(const col& c, const col& value);
  InsertBuilder& SET(const col& c, const CommonExpr& e);
  InsertBuilder& ON_CONFLICT(const std::vector<col>& cols);
  /// DO NOTHING / DO UPDATE follow from whether any SET was made.
  InsertBuilder& DO_NOTHING() { return *this; }
  InsertBuilder& DO_UPDATE() { return *this; }
  /// A sequence read run after the insert (PostgreSQL connections only).
  InsertBuilder& EXCLUDE(const SeqenceExpr& e);
  InsertBuilder& WHERE(const CommonExpr& condition);
  InsertBuilder& AND(const CommonExpr& condition);
  InsertBuilder& OR(const CommonExpr& condition);
  /// Also makes Execute use the connection's ExecuteReturning until Reset.
  InsertBuilder& RETURNING(const std::vector<col>& cols);

  /// Lets the exception of tosql through, before anything runs.
  bool Execute();

 private:
  std::shared_ptr<SQLInsert> ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  bool returning_ = false;
};

}  // namespace vexel

#endif  // VEXEL_INSERTBUILDER_H
