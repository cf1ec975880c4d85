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

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/ImplSlot.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"
#include "vexel/view.h"

namespace vexel {

class SQLQuery;

namespace detail {
/// Room for the statement inside the builder (see ImplSlot).
constexpr std::size_t kQueryRoom = 576;
/// Where the builder keeps its statement.
using QuerySlot = ImplSlot<SQLQuery, kQueryRoom>;
}  // namespace detail

class CommonExpr;
class SQLValue;

/// A SELECT statement, rendered for the connection's dialect and executed through it.
///
/// \code
/// vexel::QueryBuilder q(conn);  // items: shop.items in the connection's dialect
/// q.SELECT({items.col("id")}).FROM(items).WHERE(items.col("qty") > vexel::SQLValue(5))
///     .ORDER_BY({items.col("id").DESC()}).LIMIT(10).OFFSET(20);
/// // PostgreSQL: "SELECT shop.items.id FROM shop.items WHERE shop.items.qty > 5"
/// //             " ORDER BY shop.items.id DESC  LIMIT 10 OFFSET 20"
/// // SQL Server: "SELECT shop.items.id FROM shop.items WHERE shop.items.qty > 5"
/// //             " ORDER BY shop.items.id DESC  OFFSET 20 ROWS FETCH NEXT 10 ROWS ONLY"
/// // SQLite:     "SELECT items.id FROM shop.items WHERE items.qty > 5"
/// //             " ORDER BY items.id DESC  LIMIT 10 OFFSET 20"
/// \endcode
///
/// Clauses render when they are given. WHERE, HAVING, ON, LIMIT and OFFSET
/// replace an earlier value; AND and OR extend the last condition without
/// brackets.
class VEXEL_API QueryBuilder {
 public:
  /// A builder in the dialect `conn` reports (PostgreSQL, with a level-6 log
  /// line, when `conn` is empty).
  explicit QueryBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  /// An independent copy of the statement.
  QueryBuilder(const QueryBuilder& other);
  /// Makes both builders share one statement: a clause added through one shows in the other.
  QueryBuilder& operator=(const QueryBuilder& other);
  ~QueryBuilder();

  /// Starts an empty statement in the connection's current dialect.
  void Reset();
  /// The statement text, without a trailing ";".
  std::string tosql() const;
  /// The dialect the builder renders.
  tessel::DBTYPE db_type() const { return db_type_; }

  ///@{
  /// The select list, columns joined by " , " and rendered in the builder's
  /// dialect; a node or value renders as it stands ("SELECT 1"). SQL Server
  /// ignores the node and value forms ("SELECT  FROM ").
  QueryBuilder& SELECT(const std::vector<col>& cols);
  QueryBuilder& SELECT(std::initializer_list<col> cols);
  QueryBuilder& SELECT(const CommonExpr& e);
  QueryBuilder& SELECT(const SQLValue& v);
  ///@}
  ///@{
  /// FROM a table, a view or a subquery: `FROM(sub, "s")` renders "FROM (SELECT ...) AS s".
  QueryBuilder& FROM(const tab& t);
  QueryBuilder& FROM(const view& v);
  QueryBuilder& FROM(const QueryBuilder& sub, const std::string& alias);
  ///@}
  ///@{
  /// " JOIN t", " LEFT JOIN t", " RIGHT JOIN t" over a table, a view or a
  /// subquery; ON gives the join condition:
  /// `JOIN(items).ON(items.col("id") == orders.col("item_id"))` renders
  /// "JOIN shop.items ON shop.items.id = shop.orders.item_id".
  QueryBuilder& JOIN(const tab& t);
  QueryBuilder& JOIN(const view& v);
  QueryBuilder& JOIN(const QueryBuilder& sub, const std::string& alias);
  QueryBuilder& LEFT_JOIN(const tab& t);
  QueryBuilder& LEFT_JOIN(const view& v);
  QueryBuilder& LEFT_JOIN(const QueryBuilder& sub, const std::string& alias);
  QueryBuilder& RIGHT_JOIN(const tab& t);
  QueryBuilder& RIGHT_JOIN(const view& v);
  QueryBuilder& RIGHT_JOIN(const QueryBuilder& sub, const std::string& alias);
  ///@}
  ///@{
  /// The condition of the last join. A condition given as a temporary hands
  /// its text over instead of having it copied.
  QueryBuilder& ON(const CommonExpr& condition);
  QueryBuilder& ON(Ptr_CommonExpr&& condition);
  ///@}
  ///@{
  /// The WHERE condition; a second WHERE replaces the first (combine with AND/OR
  /// or build one condition instead).
  QueryBuilder& WHERE(const CommonExpr& condition);
  QueryBuilder& WHERE(Ptr_CommonExpr&& condition);
  ///@}
  ///@{
  /// The HAVING condition: `HAVING(vexel::SUM(o.col("qty")) > vexel::SQLValue(5))`.
  QueryBuilder& HAVING(const CommonExpr& condition);
  QueryBuilder& HAVING(Ptr_CommonExpr&& condition);
  ///@}
  ///@{
  /// Extends HAVING if set, else WHERE, else the last ON; no brackets.
  /// `WHERE(a).OR(b).AND(c)` renders "WHERE a OR b AND c", which SQL reads
  /// as a OR (b AND c). For (a OR b) AND c pass one condition:
  /// `WHERE((a).OR(b).AND(c))`.
  QueryBuilder& AND(const CommonExpr& condition);
  QueryBuilder& OR(const CommonExpr& condition);
  ///@}
  ///@{
  /// "GROUP BY a,b".
  QueryBuilder& GROUP_BY(const std::vector<col>& cols);
  QueryBuilder& GROUP_BY(std::initializer_list<col> cols);
  ///@}
  ///@{
  /// "ORDER BY" with each column's ordering suffix (col::DESC, col::NullsFirst).
  QueryBuilder& ORDER_BY(const std::vector<col>& cols);
  QueryBuilder& ORDER_BY(std::initializer_list<col> cols);
  ///@}
  ///@{
  /// Paging: PostgreSQL and SQLite "LIMIT 10 OFFSET 20"; SQL Server
  /// "OFFSET 20 ROWS FETCH NEXT 10 ROWS ONLY" (OFFSET without LIMIT is dropped
  /// there, and SQLite refuses OFFSET without LIMIT).
  QueryBuilder& LIMIT(int limit);
  QueryBuilder& OFFSET(int offset);
  ///@}
  ///@{
  /// Set operations, appended after the whole statement (after its ORDER BY and
  /// paging): "SELECT ... UNION SELECT ...". Build `other` in the same dialect.
  QueryBuilder& UNION(const QueryBuilder& other);
  QueryBuilder& UNION_ALL(const QueryBuilder& other);
  QueryBuilder& EXCEPT(const QueryBuilder& other);
  QueryBuilder& INTERSECT(const QueryBuilder& other);
  ///@}

  /// Runs the statement; a builder that reads FROM a view in schema "public"
  /// uses the connection's view-aware query operation.
  bool Execute();
  ///@{
  /// Runs the statement through the connection's ExecuteQueryUDT (stopped after
  /// `time_out` seconds), ExecuteSortByCollate or ExecuteLoop (rows fetched in
  /// batches); SQLite connections get a plain ExecuteQuery. False, with one
  /// logged line, on failure.
  bool ExecuteQueryUDT(const int& time_out);
  bool ExecuteSortByCollate(const std::string& collate_name);
  bool ExecuteLoop();
  ///@}

 protected:
  /// Whether the statement reads FROM a view in schema "public".
  bool get_public_view_status() const;

 private:
  /// "(" + sub's text + ")" [+ " AS " + alias], taking over its view flag.
  std::string subquery(const QueryBuilder& sub, const std::string& alias);

  bool public_view_ = false;
  detail::QuerySlot ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_QUERYBUILDER_H
