/// \file
/// DELETE statements with an optional condition and returned columns. SQL
/// Server writes RETURNING as `OUTPUT deleted.<col>`.
///
/// \code
/// vexel::DeleteBuilder del(conn);
/// del.DELETE_FROM(t).WHERE(t.col("id") == 3).RETURNING({t.col("id")});
/// del.Execute();  // returned rows stay in the connection
/// \endcode
#ifndef VEXEL_DELETEBUILDER_H
#define VEXEL_DELETEBUILDER_H

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/ImplSlot.h"
#include "vexel/StrictWhere.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"

namespace vexel {

class SQLDelete;

namespace detail {
/// Room for the statement inside the builder (see ImplSlot).
constexpr std::size_t kDeleteRoom = 304;
/// Where the builder keeps its statement.
using DeleteSlot = ImplSlot<SQLDelete, kDeleteRoom>;
}  // namespace detail

class CommonExpr;

/// A DELETE statement.
///
/// \code
/// del.DELETE_FROM(items).WHERE(items.col("qty") == 0).RETURNING({col("id")});
/// // PostgreSQL: "DELETE FROM shop.items WHERE shop.items.qty = 0 RETURNING id"
/// // SQL Server: "DELETE FROM shop.items OUTPUT deleted.id WHERE shop.items.qty = 0"
/// // SQLite:     "DELETE FROM items WHERE items.qty = 0 RETURNING id" (no schema)
/// \endcode
class VEXEL_API DeleteBuilder {
 public:
  /// A builder in the dialect `conn` reports.
  explicit DeleteBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  ///@{
  /// An independent copy; a move takes the statement over.
  DeleteBuilder(const DeleteBuilder& other);
  DeleteBuilder(DeleteBuilder&& other) noexcept;
  ///@}
  /// Both builders then share one statement.
  DeleteBuilder& operator=(const DeleteBuilder& other);
  /// Takes the other's statement over.
  DeleteBuilder& operator=(DeleteBuilder&& other) noexcept;
  ~DeleteBuilder();

  /// The statement text.
  std::string tosql() const;
  /// The dialect the builder renders.
  tessel::DBTYPE db_type() const { return db_type_; }

  /// The table: "DELETE FROM shop.items".
  DeleteBuilder& DELETE_FROM(const tab& t);
  ///@{
  /// A condition that renders empty leaves no WHERE, so the statement
  /// changes every row: logged as a warning (level 4), and refused by
  /// Execute in strict mode. A condition given as a temporary hands its
  /// text over instead of having it copied.
  DeleteBuilder& WHERE(const CommonExpr& condition);
  DeleteBuilder& WHERE(Ptr_CommonExpr&& condition);
  ///@}
  ///@{
  /// Extend the WHERE condition, without brackets (see QueryBuilder::AND).
  DeleteBuilder& AND(const CommonExpr& condition);
  DeleteBuilder& OR(const CommonExpr& condition);
  ///@}
  ///@{
  /// Accumulates; also makes Execute use the connection's ExecuteReturning.
  /// PostgreSQL and SQLite "... RETURNING id", SQL Server
  /// "DELETE FROM t OUTPUT deleted.id WHERE ...".
  DeleteBuilder& RETURNING(const std::vector<col>& cols);
  DeleteBuilder& RETURNING(std::initializer_list<col> cols);
  ///@}

  /// Strict mode for this builder (see vexel/StrictWhere.h): Execute refuses
  /// the statement when its WHERE condition rendered empty. Kept by copies
  /// and Reset.
  DeleteBuilder& set_strict_where(bool strict);
  /// Whether strict mode was set on this builder.
  bool strict_where() const { return strict_where_; }

  /// Runs the statement (ExecuteUpdate, or ExecuteReturning after RETURNING);
  /// false, with one logged line, on failure or when strict mode refuses it.
  bool Execute();

 private:
  void take(DeleteBuilder& other) noexcept;

  detail::DeleteSlot ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  bool returning_ = false;
  bool strict_where_ = false;
};

}  // namespace vexel

#endif  // VEXEL_DELETEBUILDER_H
