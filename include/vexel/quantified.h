/// @file
/// Comparisons with every row or any row of a subquery (x > ALL (...),
/// x = ANY (...)).
#ifndef VEXEL_QUANTIFIED_H
#define VEXEL_QUANTIFIED_H

#include <string>

#include "vexel/Ptr_CommonExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

class QueryBuilder;

/// A one-column subquery that a comparison applies to all of its rows or to
/// any of them; made by ANY_OF and ALL_OF and used on the right of a
/// comparison with a column or calc:
///
///     t.col("price") > vexel::ALL_OF(q)
///     // PostgreSQL, SQL Server: t.price > ALL (SELECT ...)
///     // SQLite, which has no ALL:
///     //   NOT EXISTS (WITH vexel_q(vexel_v) AS (SELECT ...) SELECT 1 FROM vexel_q
///     //   WHERE (t.price > vexel_q.vexel_v) IS NOT TRUE)
///
/// The conditions render with the statement's dialect. In a WHERE clause
/// both forms select the same rows; under NOT they differ where the
/// subquery yields NULL (the SQLite form treats an unknown comparison as
/// false).
class VEXEL_API quantified {
 public:
  /// Any row or all rows.
  enum Kind : int { kAny, kAll };
  /// The subquery's text in its builder's dialect.
  quantified(Kind kind, const QueryBuilder& subquery);

  /// Any row or all rows.
  Kind kind() const { return kind_; }
  /// The subquery's text, without brackets.
  const std::string& subquery() const { return subquery_; }

 private:
  Kind kind_;
  std::string subquery_;
};

/// The comparison holds for at least one row of the subquery.
VEXEL_API quantified ANY_OF(const QueryBuilder& subquery);
/// The comparison holds for every row of the subquery (also for none).
VEXEL_API quantified ALL_OF(const QueryBuilder& subquery);

///@{
/// "c = ANY (...)", and the other comparisons the same way ("<>" for !=).
VEXEL_API Ptr_CommonExpr operator==(const col& c, const quantified& q);
VEXEL_API Ptr_CommonExpr operator!=(const col& c, const quantified& q);
VEXEL_API Ptr_CommonExpr operator<(const col& c, const quantified& q);
VEXEL_API Ptr_CommonExpr operator<=(const col& c, const quantified& q);
VEXEL_API Ptr_CommonExpr operator>(const col& c, const quantified& q);
VEXEL_API Ptr_CommonExpr operator>=(const col& c, const quantified& q);
///@}

}  // namespace vexel

#endif  // VEXEL_QUANTIFIED_H
