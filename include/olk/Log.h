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
#define OLK_PRINTF_FORMAT(fmt_index, first_arg) \
  __attribute__((format(printf, fmt_index, first_arg)))
#else
#define OLK_PRINTF_FORMAT(fmt_index, first_arg)
#endif

OLK_LOG_API int write_log(int level, const char* module, const char* format, ...)
    OLK_PRINTF_FORMAT(3, 4);

#endif  // OLK_LOG_H
