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

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/SQLValue.h"
#include "vexel/StrictWhere.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"

namespace vexel {

class CommonExpr;
class QueryBuilder;
class SQLUpdate;

class VEXEL_API UpdateBuilder {
 public:
  explicit UpdateBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  UpdateBuilder(const UpdateBuilder& other);
  /// Both builders then share one statement.
  UpdateBuilder& operator=(const UpdateBuilder& other) = default;
  ~UpdateBuilder();

  void Reset();
  std::string tosql() const;
  tessel::DBTYPE db_type() const { return db_type_; }

  UpdateBuilder& UPDATE(const tab& t);
  /// SQLite only: the statement becomes "UPDATE <table><name>".
  UpdateBuilder& UPDATE(const col& c);
  /// One assignment per column; a later SET of a column replaces it.
  UpdateBuilder& SET(const col& c, const SQLValue& v);
  UpdateBuilder& SET(const col& c, const col& value);
  UpdateBuilder& SET(const col& c, const CommonExpr& e);
  /// A scalar subquery.
  UpdateBuilder& SET(const col& c, const QueryBuilder& q);
  UpdateBuilder& SET(const col& c, const std::vector<int>& values);
  UpdateBuilder& SET(const col& c, const std::vector<std::string>& values);
  /// The value for the builder's dialect; without one the builder is left
  /// unchanged and the miss is logged.
  UpdateBuilder& SET(const col& c, const std::map<tessel::DBTYPE, SQLValue>& per_dialect);
  /// A condition that renders empty leaves no WHERE, so the statement
  /// changes every row: logged as a warning (level 4), and refused by
  /// Execute in strict mode.
  UpdateBuilder& WHERE(const CommonExpr& condition);
  UpdateBuilder& AND(const CommonExpr& condition);
  UpdateBuilder& OR(const CommonExpr& condition);
  /// Accumulates; also makes Execute use the connection's ExecuteReturning.
  UpdateBuilder& RETURNING(const std::vector<col>& cols);
  UpdateBuilder& VACUUM(const std::vector<tab>& tables);

  /// target = source for each pair, FROM the given tables, WHERE the pairs
  /// of UNION_CONDITION are equal.
  UpdateBuilder& UNION_SET(const col& target, const col& source);
  UpdateBuilder& UNION_FROM(const std::vector<tab>& tables);
  UpdateBuilder& UNION_CONDITION(const col& left, const col& right);
  /// Each row of BATCH_VALUES (in tmp_cols order) updates the BATCH_SET
  /// columns of the rows whose BATCH_CONDITION columns match.
  UpdateBuilder& BATCH_SET(const std::vector<col>& cols);
  UpdateBuilder& BATCH_CONDITION(const std::vector<col>& cols);
  UpdateBuilder& BATCH_VALUES(const std::vector<col>& tmp_cols,
                              const std::vector<std::vector<SQLValue>>& tmp_values);

  /// Strict mode for this builder (see vexel/StrictWhere.h): Execute refuses
  /// the statement when its WHERE condition rendered empty. Kept by copies
  /// and Reset.
  UpdateBuilder& set_strict_where(bool strict);
  bool strict_where() const { return strict_where_; }

  bool Execute();

 private:
  std::vector<std::string> table_names(const std::vector<tab>& tables) const;

  std::string table_name_;
  std::shared_ptr<SQLUpdate> ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  bool returning_ = false;
  bool strict_where_ = false;
};

}  // namespace vexel

#endif  // VEXEL_UPDATEBUILDER_H
