// Log lines of the shipped connections, in the library's own form
// "[function]message.[file(line)]" under the module tag "tessel", so that a
// host parses both alike. The file is named from "host/" on.
#ifndef TESSEL_HOST_HOSTLOG_H
#define TESSEL_HOST_HOSTLOG_H

#include <string>

namespace tessel {
namespace host {

void LogLine(int level, const char* function, const char* file, int line,
             const std::string& message);

}  // namespace host
}  // namespace tessel

#endif  // TESSEL_HOST_HOSTLOG_H
