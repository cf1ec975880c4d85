/// \file
/// Concatenation of a column's values over a group, joined by one separator
/// character: group_concat on SQLite, array_to_string(array_agg(...)) on
/// PostgreSQL (and SQL Server, which gets the same text).
#ifndef VEXEL_GROUPCONCATEXPR_H
#define VEXEL_GROUPCONCATEXPR_H

#include <string>

#include "vexel/CommonExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

/// A column's values joined into one text: PostgreSQL and SQL Server
/// "array_to_string(array_agg(shop.items.name),',') AS names", SQLite
/// "group_concat(items.name,',') AS names".
class VEXEL_API GroupConcatExpr : public CommonExpr {
 public:
  /// Takes the column's text now, with the column's own dialect.
  explicit GroupConcatExpr(const col& c, char separator = ',');
  ///@{
  /// Plain value.
  GroupConcatExpr(const GroupConcatExpr&) = default;
  GroupConcatExpr(GroupConcatExpr&&) = default;
  GroupConcatExpr& operator=(const GroupConcatExpr&) = default;
  GroupConcatExpr& operator=(GroupConcatExpr&&) = default;
  ///@}
  ~GroupConcatExpr() override = default;

  ///@{
  /// Replaces any earlier alias.
  GroupConcatExpr& AS(const std::string& alias);
  GroupConcatExpr& AS(const char* alias);
  ///@}

  std::string GetExpr(const tessel::DBTYPE& db_type) const override;
  void set_table_name(const std::string& table_name) override;

 private:
  std::string alias_;
  std::string column_;
  /// Written between single quotes as it stands, without escaping.
  char separator_ = ',';
};

}  // namespace vexel

#endif  // VEXEL_GROUPCONCATEXPR_H
