/// \file
/// UPDATE statements: assignments, a condition, returned columns, and two
/// ways of filling many rows at once: a multi-table update (UNION_*) and a
/// batch update from a table of values (BATCH_*). PostgreSQL can also render
/// a list of VACUUM commands instead.
///
/// \code
/// vexel::UpdateBuilder up(conn);
/// up.UPDATE(t).SET(t.col("price"), vexel::SQLValue(4)).WHERE(t.col("id") == 1);
/// up.Execute();
/// \endcode
#ifndef VEXEL_UPDATEBUILDER_H
#define VEXEL_UPDATEBUILDER_H

#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/ImplSlot.h"
#include "vexel/SQLValue.h"
#include "vexel/StrictWhere.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"

namespace vexel {

class SQLUpdate;

namespace detail {
/// Room for the statement inside the builder (see ImplSlot).
constexpr std::size_t kUpdateRoom = 512;
/// Where the builder keeps its statement.
using UpdateSlot = ImplSlot<SQLUpdate, kUpdateRoom>;
}  // namespace detail

class CommonExpr;
class QueryBuilder;

/// An UPDATE statement.
///
/// \code
/// up.UPDATE(items).SET(col("qty"), SQLValue(3)).SET(col("name"), SQLValue("b"))
///     .WHERE(items.col("id") == 1).RETURNING({col("id")});
/// // PostgreSQL: "UPDATE shop.items SET name = 'b', qty = 3 WHERE shop.items.id = 1 RETURNING id"
/// // SQL Server: "UPDATE shop.items SET name = 'b', qty = 3 OUTPUT inserted.id"
/// //             " WHERE shop.items.id = 1"
/// // SQLite:     "UPDATE shop.items SET name = 'b', qty = 3 WHERE items.id = 1 RETURNING id"
/// \endcode
///
/// Assignments are written in column-name order. SET targets take bare
/// columns: `SET(items.col("qty"), ...)` writes "SET shop.items.qty = 3".
class VEXEL_API UpdateBuilder {
 public:
  /// A builder in the dialect `conn` reports.
  explicit UpdateBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  /// An independent copy of the statement.
  UpdateBuilder(const UpdateBuilder& other);
  /// Both builders then share one statement.
  UpdateBuilder& operator=(const UpdateBuilder& other);
  ~UpdateBuilder();

  /// Starts an empty statement.
  void Reset();
  /// The statement text.
  std::string tosql() const;
  /// The dialect the builder renders.
  tessel::DBTYPE db_type() const { return db_type_; }

  /// The table: "UPDATE shop.items".
  UpdateBuilder& UPDATE(const tab& t);
  /// SQLite only: the statement becomes "UPDATE <table><name>".
  UpdateBuilder& UPDATE(const col& c);
  /// One assignment per column; a later SET of a column replaces it:
  /// `SET(col("qty"), SQLValue(3))` writes "SET qty = 3".
  UpdateBuilder& SET(const col& c, const SQLValue& v);
  ///@{
  /// "c = other column" or a node's text: `SET(col("qty"), col("qty").increase(SQLValue(1)))`
  /// writes "qty = qty + 1".
  UpdateBuilder& SET(const col& c, const col& value);
  UpdateBuilder& SET(const col& c, const CommonExpr& e);
  ///@}
  /// A scalar subquery.
  UpdateBuilder& SET(const col& c, const QueryBuilder& q);
  ///@{
  /// An array value for an array column.
  UpdateBuilder& SET(const col& c, const std::vector<int>& values);
  UpdateBuilder& SET(const col& c, const std::vector<std::string>& values);
  ///@}
  /// The value for the builder's dialect; without one the builder is left
  /// unchanged and the miss is logged.
  UpdateBuilder& SET(const col& c, const std::map<tessel::DBTYPE, SQLValue>& per_dialect);
  ///@{
  /// A condition that renders empty leaves no WHERE, so the statement
  /// changes every row: logged as a warning (level 4), and refused by
  /// Execute in strict mode. A condition given as a temporary hands its
  /// text over instead of having it copied.
  UpdateBuilder& WHERE(const CommonExpr& condition);
  UpdateBuilder& WHERE(Ptr_CommonExpr&& condition);
  ///@}
  ///@{
  /// Extend the WHERE condition, without brackets (see QueryBuilder::AND).
  UpdateBuilder& AND(const CommonExpr& condition);
  UpdateBuilder& OR(const CommonExpr& condition);
  ///@}
  ///@{
  /// Accumulates; also makes Execute use the connection's ExecuteReturning.
  /// PostgreSQL and SQLite "... RETURNING id", SQL Server
  /// "... OUTPUT inserted.id WHERE ...".
  UpdateBuilder& RETURNING(const std::vector<col>& cols);
  UpdateBuilder& RETURNING(std::initializer_list<col> cols);
  ///@}
  /// PostgreSQL only: the statement becomes "VACUUM shop.items;" per table.
  UpdateBuilder& VACUUM(const std::vector<tab>& tables);

  ///@{
  /// target = source for each pair, FROM the given tables, WHERE the pairs
  /// of UNION_CONDITION are equal. PostgreSQL "UPDATE shop.items SET
  /// qty=shop.src.qty FROM shop.src WHERE shop.items.id=shop.src.id"; SQLite
  /// the same with "src.qty", "items.id"; SQL Server has no text ("UPDATE shop.items SE").
  UpdateBuilder& UNION_SET(const col& target, const col& source);
  UpdateBuilder& UNION_FROM(const std::vector<tab>& tables);
  UpdateBuilder& UNION_CONDITION(const col& left, const col& right);
  ///@}
  ///@{
  /// Each row of BATCH_VALUES (in tmp_cols order) updates the BATCH_SET
  /// columns of the rows whose BATCH_CONDITION columns match. PostgreSQL
  /// "UPDATE shop.items SET qty=tmp.qty FROM (VALUES (1, 5) , (2, 6) )  AS
  /// tmp(id,qty) WHERE shop.items.id=tmp.id"; SQLite "UPDATE shop.items SET
  /// qty= CASE  WHEN id=1 THEN 5 WHEN id=2 THEN 6 END  WHERE id IN (1,2)"; SQL
  /// Server has no text.
  UpdateBuilder& BATCH_SET(const std::vector<col>& cols);
  UpdateBuilder& BATCH_CONDITION(const std::vector<col>& cols);
  UpdateBuilder& BATCH_VALUES(const std::vector<col>& tmp_cols,
                              const std::vector<std::vector<SQLValue>>& tmp_values);
  ///@}

  /// Strict mode for this builder (see vexel/StrictWhere.h): Execute refuses
  /// the statement when its WHERE condition rendered empty. Kept by copies
  /// and Reset.
  UpdateBuilder& set_strict_where(bool strict);
  /// Whether strict mode was set on this builder.
  bool strict_where() const { return strict_where_; }

  /// Runs the statement (ExecuteUpdate, or ExecuteReturning after RETURNING);
  /// false, with one logged line, on failure or when strict mode refuses it.
  bool Execute();

 private:
  std::vector<std::string> table_names(const std::vector<tab>& tables) const;

  detail::UpdateSlot ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  bool returning_ = false;
  bool strict_where_ = false;
};

}  // namespace vexel

#endif  // VEXEL_UPDATEBUILDER_H
