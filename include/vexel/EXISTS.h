// Sub-query tests: " EXISTS (" + sub-query text + ")" and its negation. The
// leading blank is part of the text.
#ifndef VEXEL_EXISTS_H
#define VEXEL_EXISTS_H

#include "vexel/SQLExpr.h"
#include "vexel/export.h"

namespace vexel {

VEXEL_API SQLExpr EXISTS(const SQLExpr& subquery);
VEXEL_API SQLExpr NOT_EXISTS(const SQLExpr& subquery);

}  // namespace vexel

#endif  // VEXEL_EXISTS_H
