#include "vexel/EXISTS.h"

namespace vexel {

// The leading blank is part of the text callers match.
SQLExpr EXISTS(const SQLExpr& subquery) { return SQLExpr(" EXISTS (" + subquery.ToExpr() + ")"); }

SQLExpr NOT_EXISTS(const SQLExpr& subquery) {
  return SQLExpr(" NOT EXISTS (" + subquery.ToExpr() + ")");
}

}  // namespace vexel
