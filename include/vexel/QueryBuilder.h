/// \file
/// SELECT statements. A QueryBuilder is a facade over one implementation of
/// the connection's dialect (SQLite for 1, SQL Server for 3, PostgreSQL for 2
/// and any other code, PostgreSQL when there is no connection). Every clause
/// is rendered when it is given and returns the builder, so calls chain:
///
/// \code
/// vexel::QueryBuilder q(conn);
/// q.SELECT({t.col("id")}).FROM(t).WHERE(t.col("id") == 1).LIMIT(10);
/// q.Execute();  // rows stay in the connection
/// \endcode
///
/// Copy construction makes an independent builder (without the connection's
/// ownership of the view flag); assignment makes both builders share one
/// statement, so a clause added through one shows in the other.
#ifndef VEXEL_QUERYBUILDER_H
#define VEXEL_QUERYBUILDER_H

#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"
#include "vexel/view.h"

namespace vexel {

class CommonExpr;
class SQLQuery;
class SQLValue;

class VEXEL_API QueryBuilder {
 public:
  explicit QueryBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  QueryBuilder(const QueryBuilder& other);
  QueryBuilder& operator=(const QueryBuilder& other);
  ~QueryBuilder();

  /// Starts an empty statement in the connection's current dialect.
  void Reset();
  /// The statement text, without a trailing ";".
  std::string tosql() const;
  tessel::DBTYPE db_type() const { return db_type_; }

  QueryBuilder& SELECT(const std::vector<col>& cols);
  QueryBuilder& SELECT(const CommonExpr& e);
  QueryBuilder& SELECT(const SQLValue& v);
  QueryBuilder& FROM(const tab& t);
  QueryBuilder& FROM(const view& v);
  QueryBuilder& FROM(const QueryBuilder& sub, const std::string& alias);
  QueryBuilder& JOIN(const tab& t);
  QueryBuilder& JOIN(const view& v);
  QueryBuilder& JOIN(const QueryBuilder& sub, const std::string& alias);
  QueryBuilder& LEFT_JOIN(const tab& t);
  QueryBuilder& LEFT_JOIN(const view& v);
  QueryBuilder& LEFT_JOIN(const QueryBuilder& sub, const std::string& alias);
  QueryBuilder& RIGHT_JOIN(const tab& t);
  QueryBuilder& RIGHT_JOIN(const view& v);
  QueryBuilder& RIGHT_JOIN(const QueryBuilder& sub, const std::string& alias);
  QueryBuilder& ON(const CommonExpr& condition);
  QueryBuilder& WHERE(const CommonExpr& condition);
  QueryBuilder& HAVING(const CommonExpr& condition);
  /// Extends HAVING if set, else WHERE, else the last ON; no brackets.
  QueryBuilder& AND(const CommonExpr& condition);
  QueryBuilder& OR(const CommonExpr& condition);
  QueryBuilder& GROUP_BY(const std::vector<col>& cols);
  QueryBuilder& ORDER_BY(const std::vector<col>& cols);
  QueryBuilder& LIMIT(int limit);
  QueryBuilder& OFFSET(int offset);
  QueryBuilder& UNION(const QueryBuilder& other);
  QueryBuilder& UNION_ALL(const QueryBuilder& other);
  QueryBuilder& EXCEPT(const QueryBuilder& other);
  QueryBuilder& INTERSECT(const QueryBuilder& other);

  /// Runs the statement; a builder that reads FROM a view in schema "public"
  /// uses the connection's view-aware query operation.
  bool Execute();
  bool ExecuteQueryUDT(const int& time_out);
  bool ExecuteSortByCollate(const std::string& collate_name);
  bool ExecuteLoop();

 protected:
  bool get_public_view_status() const;

 private:
  /// "(" + sub's text + ")" [+ " AS " + alias], taking over its view flag.
  std::string subquery(const QueryBuilder& sub, const std::string& alias);

  bool public_view_ = false;
  std::shared_ptr<SQLQuery> ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_QUERYBUILDER_H
