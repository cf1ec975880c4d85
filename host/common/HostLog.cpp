#include "common/HostLog.h"

#include <string_view>

#include "olk/Log.h"

namespace tessel {
namespace host {

void LogLine(int level, const char* function, const char* file, int line,
             const std::string& message) {
  const std::string_view path(file);
  const size_t at = path.rfind("/host/");
  const char* shown = at == std::string_view::npos ? file : file + at + 1;
  write_log(level, "tessel", "[%s]%s.[%s(%d)]", function, message.c_str(), shown, line);
}

}  // namespace host
}  // namespace tessel
