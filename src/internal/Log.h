// The library's one logging macro. Every line goes to the host's write_log
// with the module tag "Vexel", the qualified name of the reporting function
// first and the source file and line last, so hosts can parse
// "[function]message.[file(line)]".
#ifndef VEXEL_INTERNAL_LOG_H
#define VEXEL_INTERNAL_LOG_H

#include <string>

#include "olk/Log.h"

namespace vexel {
namespace internal {

constexpr const char* kLogModule = "Vexel";

// "bool vexel::QueryBuilder::Execute()" -> "vexel::QueryBuilder::Execute".
std::string qualified_name(const char* pretty_function);

// Where a log line comes from: the raw signature of the function (turned
// into its qualified name only when a line is written), file and line.
struct Site {
  const char* function = "";
  const char* file = "";
  int line = 0;
};

// Passes the function name before and the file and line after the message
// arguments, which must be printf-compatible (int, const char*).
template <typename... Args>
void log_line(int level, const std::string& function, const char* file, int line,
              const char* format, const Args&... args) {
  ::write_log(level, kLogModule, format, function.c_str(), args..., file, line);
}

}  // namespace internal
}  // namespace vexel

#if defined(_MSC_VER)
#define VEXEL_PRETTY_FUNCTION __FUNCSIG__
#else
#define VEXEL_PRETTY_FUNCTION __PRETTY_FUNCTION__
#endif

// Log lines name the source file relative to the project root ("src/..."),
// the same on every build machine and platform. The build passes the length
// of the root's absolute path, which __FILE__ starts with; cutting by length
// leaves the separators as the compiler wrote them.
#ifndef VEXEL_SOURCE_ROOT_LENGTH
#define VEXEL_SOURCE_ROOT_LENGTH 0
#endif

namespace vexel {
namespace internal {

// `file` without its first `root` characters; a path shorter than that (a
// file from outside the root) stays whole.
constexpr const char* relative_to_root(const char* file, unsigned root) {
  for (unsigned i = 0; i < root; ++i) {
    if (file[i] == '\0') return file;
  }
  return file + root;
}

}  // namespace internal
}  // namespace vexel

// The calling operation as a Site, for shared helpers that log on its behalf.
#define VEXEL_SITE           \
  (::vexel::internal::Site{  \
      VEXEL_PRETTY_FUNCTION, \
      ::vexel::internal::relative_to_root(__FILE__, (VEXEL_SOURCE_ROOT_LENGTH)), __LINE__})

// VEXEL_LOG_AT(site, level, format, args...): one line on behalf of `site`.
#define VEXEL_LOG_AT(site, level, ...)                                                     \
  ::vexel::internal::log_line((level), ::vexel::internal::qualified_name((site).function), \
                              (site).file, (site).line, __VA_ARGS__)

// VEXEL_LOG(level, format, args...): one line under the enclosing function.
#define VEXEL_LOG(level, ...) VEXEL_LOG_AT(VEXEL_SITE, level, __VA_ARGS__)

#endif  // VEXEL_INTERNAL_LOG_H
