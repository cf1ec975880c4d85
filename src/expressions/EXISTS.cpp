#include "vexel/EXISTS.h"

#include "vexel/QueryBuilder.h"

namespace vexel {

// The leading blank is part of the text callers match.
SQLExpr EXISTS(const SQLExpr& subquery) { return SQLExpr(" EXISTS (" + subquery.ToExpr() + ")"); }

SQLExpr NOT_EXISTS(const SQLExpr& subquery) {
  return SQLExpr(" NOT EXISTS (" + subquery.ToExpr() + ")");
}

SQLExpr EXISTS(const QueryBuilder& subquery) { return EXISTS(SQLExpr(subquery.tosql())); }

SQLExpr NOT_EXISTS(const QueryBuilder& subquery) { return NOT_EXISTS(SQLExpr(subquery.tosql())); }

col scalar_subquery(const QueryBuilder& subquery, const std::string& alias) {
  std::string text = "(" + subquery.tosql() + ")";
  if (!alias.empty()) text += " AS " + alias;
  return col(text);
}

}  // namespace vexel
