// Default logging library: formats a write_log call and forwards the line to
// the installed sink.
#include <cstdarg>
#include <cstdio>
#include <string>
#include <utility>

#include "olk/Log.h"
#include "olk/LogSink.h"
#include "olk/StringUtil.h"

namespace Olk {
namespace Log {
namespace {

// The logging library is the host's one process-wide channel; the sink is
// its only state.
Sink& current_sink() {
  static Sink sink;
  return sink;
}

// Set while this thread is inside the sink: a sink that logs (directly or
// through code it calls) would otherwise recurse until the stack runs out.
thread_local bool in_sink = false;

}  // namespace

void DefaultSink(int level, const std::string& module, const std::string& text) {
  if (level >= 4) {
    std::fprintf(stderr, "[%s] %s\n", module.c_str(), text.c_str());
  }
}

Sink SetSink(Sink sink) { return std::exchange(current_sink(), std::move(sink)); }

}  // namespace Log
}  // namespace Olk

int write_log(int level, const char* module, const char* format, ...) {
  if (format == nullptr) return -1;
  va_list args;
  va_start(args, format);
  const std::string text = Olk::Base::StringUtil::vstr_fmt(format, args);
  va_end(args);
  const std::string mod = module != nullptr ? module : "";
  if (Olk::Log::in_sink) {
    Olk::Log::DefaultSink(level, mod, text);
    return static_cast<int>(text.size());
  }
  // A copy: the sink may replace itself (SetSink) while it runs, which
  // would destroy the installed function in the middle of its call.
  const Olk::Log::Sink sink = Olk::Log::current_sink();
  if (sink) {
    Olk::Log::in_sink = true;
    struct Reset {
      ~Reset() { Olk::Log::in_sink = false; }
    } reset;
    sink(level, mod, text);
  } else {
    Olk::Log::DefaultSink(level, mod, text);
  }
  return static_cast<int>(text.size());
}
