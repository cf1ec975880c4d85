/// \file
/// Statements with common table expressions: named sub-statements, an
/// optional RECURSIVE mark and one main statement.
///
/// \code
/// vexel::WithBuilder w(conn);
/// w.AS("big", big_orders).WithDo(q);  // "WITH big AS (...) SELECT ..."
/// w.Execute();
/// \endcode
///
/// Every sub-statement is rendered when it is given. The three dialects
/// render the same text and differ only in how they execute it.
#ifndef VEXEL_WITHBUILDER_H
#define VEXEL_WITHBUILDER_H

#include <memory>
#include <string>

#include "tessel/CConnect.h"
#include "vexel/export.h"

namespace vexel {

class DeleteBuilder;
class InsertBuilder;
class QueryBuilder;
class SQLWith;
class UpdateBuilder;

/// A WITH statement over other builders' statements.
///
/// \code
/// big.SELECT({items.col("id")}).FROM(items).WHERE(items.col("qty") > SQLValue(5));
/// main.SELECT({col("id")}).FROM(tab("big"));
/// w.AS("big", big).WithDo(main);
/// // PostgreSQL, SQL Server: "WITH big AS (SELECT shop.items.id FROM shop.items"
/// //                         " WHERE shop.items.qty > 5) SELECT id FROM big"
/// // SQLite: "WITH big AS (SELECT items.id FROM shop.items WHERE items.qty > 5)"
/// //         " SELECT id FROM big"
/// \endcode
///
/// RECURSIVE() makes it "WITH RECURSIVE ...". Build the inner statements in
/// the builder's dialect.
class VEXEL_API WithBuilder {
 public:
  /// An empty connection is not logged: the builder silently takes dialect 2.
  explicit WithBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  /// An independent statement on the same connection.
  WithBuilder(const WithBuilder& other);
  /// Takes over the other's statement; the other is left without one.
  WithBuilder(WithBuilder&& other) noexcept;
  /// Value semantics: the assigned builder gets its own copy of the
  /// statement (unlike QueryBuilder, whose assignment shares it).
  WithBuilder& operator=(const WithBuilder& other);
  /// Takes the other's statement over.
  WithBuilder& operator=(WithBuilder&& other) noexcept;
  ~WithBuilder();

  /// Starts an empty statement.
  void Reset();
  /// The statement text.
  std::string tosql() const;
  /// The dialect the builder renders.
  tessel::DBTYPE db_type() const { return db_type_; }
  /// The implementation, null after a move.
  SQLWith* GetImpl() const { return ptr_builder_.get(); }

  ///@{
  /// Appends (name, the builder's text); a repeated name is a further entry.
  WithBuilder& AS(const std::string& name, const QueryBuilder& statement);
  WithBuilder& AS(const std::string& name, const InsertBuilder& statement);
  WithBuilder& AS(const std::string& name, const UpdateBuilder& statement);
  WithBuilder& AS(const std::string& name, const DeleteBuilder& statement);
  ///@}
  /// Writes "WITH RECURSIVE".
  WithBuilder& RECURSIVE();
  ///@{
  /// The main statement; a later one replaces an earlier one.
  /// The text form is taken as it stands: with no AS entry, `WithDo("SELECT 1")`
  /// renders "WITH  SELECT 1".
  WithBuilder& WithDo(const std::string& sql);
  WithBuilder& WithDo(const QueryBuilder& statement);
  WithBuilder& WithDo(const InsertBuilder& statement);
  WithBuilder& WithDo(const UpdateBuilder& statement);
  WithBuilder& WithDo(const DeleteBuilder& statement);
  ///@}

  ///@{
  /// Runs the statement (ExecuteQuery); the other forms as QueryBuilder's.
  /// False, with one logged line, on failure.
  bool Execute();
  bool ExecuteQueryUDT(const int& time_out);
  bool ExecuteSortByCollate(const std::string& collate_name);
  bool ExecuteLoop();
  ///@}

 private:
  std::shared_ptr<SQLWith> ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
};

}  // namespace vexel

#endif  // VEXEL_WITHBUILDER_H
