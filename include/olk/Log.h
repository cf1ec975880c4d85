/// \file
/// The host's log writer. The library calls it once per failure or trace
/// point; a host links either its own logging library or the default one
/// shipped in host/log, which forwards each formatted line to a sink.
///
/// Levels: 2 trace, 3 information, 4 warning, 5 error, 6 builder without
/// connection.
#ifndef OLK_LOG_H
#define OLK_LOG_H

#include "olk/Export.h"

#if defined(__GNUC__) || defined(__clang__)
/// Lets GCC and Clang check a printf-style call's arguments against its format.
#define OLK_PRINTF_FORMAT(fmt_index, first_arg) \
  __attribute__((format(printf, fmt_index, first_arg)))
#else
/// Other compilers check nothing.
#define OLK_PRINTF_FORMAT(fmt_index, first_arg)
#endif

/// Writes one log line; the host defines it (or links the default logger, vexel::log).
///
/// The library calls it once per failure or trace point, with `module`
/// "Vexel" and a printf `format` whose line reads
/// `[qualified::function]message.[file(line)]`, for example
/// \code
/// [vexel::SQLiteQuery::Execute]ExecuteQuery failed errorcode:1.error_info:no such table: t,
/// sql:SELECT x FROM t;.[src/sqlite/SQLiteQuery.cpp(12)]
/// \endcode
/// (one line; broken here). What the library expects: the function may be
/// called from every thread that uses a builder, does not throw, and
/// returns; its result is ignored. Levels: 2 trace, 3 information,
/// 4 warning, 5 error, 6 builder without a connection.
OLK_LOG_API int write_log(int level, const char* module, const char* format, ...)
    OLK_PRINTF_FORMAT(3, 4);

#endif  // OLK_LOG_H
