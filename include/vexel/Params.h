/// \file
/// Bound parameters: values that reach the engine apart from the statement's
/// text. Each call gives a numbered placeholder to put where an SQLValue
/// goes; the shipped connections run the statement with the values bound.
///
/// \code
/// vexel::Params p(conn->GetDBType());
/// vexel::QueryBuilder q(conn);
/// q.SELECT({c}).FROM(t).WHERE(c == p(user_input));   ... WHERE t.c = $1
/// conn->BindNext(p.values());
/// q.Execute();
/// \endcode
///
/// Placeholders are "$n" on PostgreSQL (and unknown codes), "?n" on SQLite
/// and "@pn" on SQL Server, numbered in the order of the calls, so the order
/// in which clauses are built does not matter. A refused SafeValue gives its
/// refused text instead, and the statement never runs.
#ifndef VEXEL_PARAMS_H
#define VEXEL_PARAMS_H

#include <vector>

#include "tessel/DBType.h"
#include "tessel/Param.h"
#include "vexel/SQLValue.h"
#include "vexel/SafeValue.h"
#include "vexel/export.h"

namespace vexel {

/// Numbered placeholders whose values travel apart from the text.
///
/// \code
/// vexel::Params p(conn->GetDBType());
/// q.SELECT({t.col("id")}).FROM(t).WHERE(t.col("name") == p("x")).AND(t.col("qty") > p(3));
/// // PostgreSQL "... WHERE t.name = $1 AND t.qty > $2", SQLite "?1", "?2",
/// // SQL Server "@p1", "@p2"
/// conn->BindNext(p.values());  // right before Execute
/// q.Execute();
/// \endcode
class VEXEL_API Params {
 public:
  /// Placeholders for dialect `db`.
  explicit Params(tessel::DBTYPE db);

  /// Keeps `value` and returns the next placeholder ("$1", "?1" or "@p1").
  SQLValue operator()(const SafeValue& value);
  /// The values, the first for placeholder 1.
  const std::vector<tessel::Param>& values() const { return values_; }

 private:
  tessel::DBTYPE db_;
  std::vector<tessel::Param> values_;
};

}  // namespace vexel

#endif  // VEXEL_PARAMS_H
