/// \file
/// The whole public interface of the library, with the host interfaces it
/// relies on (tessel::CConnect, tessel::DBTYPE).
#ifndef VEXEL_VEXEL_H
#define VEXEL_VEXEL_H

#include "tessel/CConnect.h"
#include "tessel/DBType.h"
#include "vexel/ArrayExpr.h"
#include "vexel/CASE.h"
#include "vexel/CDBSystemInfo.h"
#include "vexel/CommonExpr.h"
#include "vexel/DeleteBuilder.h"
#include "vexel/EXISTS.h"
#include "vexel/GroupConcatExpr.h"
#include "vexel/InsertBuilder.h"
#include "vexel/JsonPath.h"
#include "vexel/Params.h"
#include "vexel/Ptr_CommonExpr.h"
#include "vexel/QueryBuilder.h"
#include "vexel/SQLExpr.h"
#include "vexel/SQLValue.h"
#include "vexel/SafeValue.h"
#include "vexel/SeqenceBuilder.h"
#include "vexel/SeqenceExpr.h"
#include "vexel/StrictWhere.h"
#include "vexel/TimeExpr.h"
#include "vexel/UpdateBuilder.h"
#include "vexel/WithBuilder.h"
#include "vexel/aggr_func.h"
#include "vexel/array_col.h"
#include "vexel/calc.h"
#include "vexel/col.h"
#include "vexel/export.h"
#include "vexel/expr.h"
#include "vexel/func.h"
#include "vexel/quantified.h"
#include "vexel/quote_name.h"
#include "vexel/sch.h"
#include "vexel/seq.h"
#include "vexel/tab.h"
#include "vexel/view.h"

#endif  // VEXEL_VEXEL_H
