/// \file
/// New values for a JSON column in an UPDATE, one ready text per dialect:
/// UpdateBuilder::SET(col, map) takes the entry of its own dialect. The path
/// is given in PostgreSQL's text-array form with its quotes, "'{a,b}'", and
/// becomes "$.a.b" for SQLite. Entries 3 (SQL Server) and 4 stay empty.
/// Every step is traced at level 2; a path without braces, or a SQLite value
/// without single quotes around it, is reported at level 5.
#ifndef VEXEL_JSONPATH_H
#define VEXEL_JSONPATH_H

#include <map>
#include <string>

#include "tessel/DBType.h"
#include "vexel/SQLValue.h"
#include "vexel/col.h"
#include "vexel/export.h"

namespace vexel {

/// Removes the key at `target_path`: `JSON_KEY_DELETE(t.col("doc"), "'{a,b}'")`
/// gives PostgreSQL "t.doc\::jsonb #- '{a,b}'" and SQLite
/// "json_remove( t.doc,'$.a.b')", for UpdateBuilder::SET with a map.
VEXEL_API std::map<tessel::DBTYPE, SQLValue> JSON_KEY_DELETE(const col& c,
                                                             const std::string& target_path);

/// Sets the value at `target_path` to `new_value`, a quoted SQL literal such
/// as "'\"text\"'".
/// \code
/// up.UPDATE(t).SET(col("doc"), vexel::JSON_SET(t.col("doc"), "'{a,b}'", "'\"x\"'"));
/// // PostgreSQL: "UPDATE t SET doc = jsonb_set( t.doc,'{a,b}','\"x\"')"
/// // SQLite:     "UPDATE t SET doc = json_set( t.doc,'$.a.b',\"x\")"
/// // SQL Server: the entry is empty, "UPDATE t SET doc = "
/// \endcode
VEXEL_API std::map<tessel::DBTYPE, SQLValue> JSON_SET(const col& c, const std::string& target_path,
                                                      std::string new_value);

}  // namespace vexel

#endif  // VEXEL_JSONPATH_H
