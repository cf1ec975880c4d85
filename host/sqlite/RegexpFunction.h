// regexp(text, pattern, mode), the SQL function that SQLite statements from
// the library call for pattern predicates. Modes: 0 case-insensitive match,
// 1 case-sensitive match, 2 case-insensitive non-match, 3 case-sensitive
// non-match. NULL in any argument gives NULL. Matching searches anywhere in
// the text, with Unicode case folding, '.' matching newlines too, and bounded
// time and backtracking stack so that a runaway pattern fails as an SQL error.
#ifndef VEXEL_HOST_SQLITE_REGEXPFUNCTION_H
#define VEXEL_HOST_SQLITE_REGEXPFUNCTION_H

struct sqlite3;

namespace tessel {
namespace sqlite_functions {

// Returns an SQLite result code.
int RegisterRegexp(sqlite3* db);

}  // namespace sqlite_functions
}  // namespace tessel

#endif  // VEXEL_HOST_SQLITE_REGEXPFUNCTION_H
