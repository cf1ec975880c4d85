/// \file
/// Names from outside the program (user input, a configuration, another
/// database's catalogue) for schemas, tables, views and columns. The builders
/// write names as given, so a name that needs quotes must arrive quoted:
///
/// \code
/// vexel::sch s(vexel::quote_name("Sales Data", db));   "Sales Data" / [Sales Data]
/// s.tab(vexel::quote_name("order", db))                "order" / [order]
/// s.tab(vexel::quote_name("orders", db))               orders
/// \endcode
///
/// quote_name leaves a plain name (letters, digits and _, not a keyword, and
/// on PostgreSQL lower case, as unquoted names fold to it) as it is, and
/// quotes any other: "..." with inner " doubled on PostgreSQL (and unknown
/// codes) and SQLite, [...] with inner ] doubled on SQL Server. Whatever the
/// name holds, it stays one name. An empty name stays empty.
#ifndef VEXEL_QUOTE_NAME_H
#define VEXEL_QUOTE_NAME_H

#include <string>

#include "tessel/DBType.h"
#include "vexel/export.h"

namespace vexel {

/// A name from outside made safe as one identifier: plain lower-case names as
/// they are ("orders"), any other in double quotes on PostgreSQL and SQLite
/// ("\"Order Lines\"") or brackets on SQL Server ("[Order Lines]").
VEXEL_API std::string quote_name(const std::string& name, tessel::DBTYPE db);

}  // namespace vexel

#endif  // VEXEL_QUOTE_NAME_H
