/// \file
/// Sub-query tests: " EXISTS (" + sub-query text + ")" and its negation. The
/// leading blank is part of the text.
#ifndef VEXEL_EXISTS_H
#define VEXEL_EXISTS_H

#include <string>

#include "vexel/SQLExpr.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

class QueryBuilder;

///@{
/// " EXISTS (subquery)" and " NOT EXISTS (subquery)" (with a leading blank):
/// `EXISTS(SQLExpr("SELECT 1"))` renders " EXISTS (SELECT 1)".
VEXEL_API SQLExpr EXISTS(const SQLExpr& subquery);
VEXEL_API SQLExpr NOT_EXISTS(const SQLExpr& subquery);
///@}
///@{
/// The same over a builder's statement.
VEXEL_API SQLExpr EXISTS(const QueryBuilder& subquery);
VEXEL_API SQLExpr NOT_EXISTS(const QueryBuilder& subquery);
///@}
/// A scalar subquery for a select list: "(subquery) AS alias" (no alias: the
/// bracketed text alone).
VEXEL_API col scalar_subquery(const QueryBuilder& subquery, const std::string& alias);

}  // namespace vexel

#endif  // VEXEL_EXISTS_H
