/// \file
/// DELETE statements with an optional condition and returned columns. SQL
/// Server writes RETURNING as OUTPUT deleted.<col>.
///
/// \code
/// vexel::DeleteBuilder del(conn);
/// del.DELETE_FROM(t).WHERE(t.col("id") == 3).RETURNING({t.col("id")});
/// del.Execute();  // returned rows stay in the connection
/// \endcode
#ifndef VEXEL_DELETEBUILDER_H
#define VEXEL_DELETEBUILDER_H

#include <memory>
#include <string>
#include <vector>

#include "tessel/CConnect.h"
#include "vexel/StrictWhere.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/tab.h"

namespace vexel {

class CommonExpr;
class SQLDelete;

class VEXEL_API DeleteBuilder {
 public:
  explicit DeleteBuilder(const std::shared_ptr<tessel::CConnect>& conn);
  DeleteBuilder(const DeleteBuilder& other);
  DeleteBuilder(DeleteBuilder&& other) noexcept = default;
  /// Both builders then share one statement.
  DeleteBuilder& operator=(const DeleteBuilder& other) = default;
  DeleteBuilder& operator=(DeleteBuilder&& other) noexcept = default;
  ~DeleteBuilder();

  std::string tosql() const;
  tessel::DBTYPE db_type() const { return db_type_; }

  DeleteBuilder& DELETE_FROM(const tab& t);
  /// A condition that renders empty leaves no WHERE, so the statement
  /// changes every row: logged as a warning (level 4), and refused by
  /// Execute in strict mode.
  DeleteBuilder& WHERE(const CommonExpr& condition);
  DeleteBuilder& AND(const CommonExpr& condition);
  DeleteBuilder& OR(const CommonExpr& condition);
  /// Accumulates; also makes Execute use the connection's ExecuteReturning.
  DeleteBuilder& RETURNING(const std::vector<col>& cols);

  /// Strict mode for this builder (see vexel/StrictWhere.h): Execute refuses
  /// the statement when its WHERE condition rendered empty. Kept by copies
  /// and Reset.
  DeleteBuilder& set_strict_where(bool strict);
  bool strict_where() const { return strict_where_; }

  bool Execute();

 private:
  std::shared_ptr<SQLDelete> ptr_builder_;
  std::shared_ptr<tessel::CConnect> db_conn_;
  tessel::DBTYPE db_type_ = tessel::DB_POSTGRESQL;
  bool returning_ = false;
  bool strict_where_ = false;
};

}  // namespace vexel

#endif  // VEXEL_DELETEBUILDER_H
