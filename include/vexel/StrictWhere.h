/// \file
/// Strict conditions for UPDATE and DELETE. A condition that renders empty
/// (a default Ptr_CommonExpr, SQLExpr(""), a time function the dialect has
/// no text for) leaves the statement without a WHERE, so it changes every
/// row. UpdateBuilder and DeleteBuilder always warn when given such a
/// condition; in strict mode their Execute also refuses the statement: it
/// logs one line, returns false and runs nothing.
///
/// \code
/// vexel::set_strict_where_default(true);  // every builder of the process
/// vexel::DeleteBuilder del(conn);
/// del.set_strict_where(true);             // this builder only
/// \endcode
#ifndef VEXEL_STRICTWHERE_H
#define VEXEL_STRICTWHERE_H

#include "vexel/export.h"

namespace vexel {

/// Turns strict mode on or off for every UpdateBuilder and DeleteBuilder of
/// the process (off at start); returns the previous setting. A builder is
/// strict when this is on or its own set_strict_where(true) was called.
VEXEL_API bool set_strict_where_default(bool strict);
/// The process-wide setting of set_strict_where_default.
VEXEL_API bool strict_where_default();

}  // namespace vexel

#endif  // VEXEL_STRICTWHERE_H
