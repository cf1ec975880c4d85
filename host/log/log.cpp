// Default logging library: formats a write_log call and forwards the line to
// the installed sink.
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "olk/Log.h"
#include "olk/LogSink.h"
#include "olk/StringUtil.h"

namespace Olk {
namespace Log {
namespace {

// The logging library is the host's one process-wide channel; the sink is
// its only state. Lines are written from any thread while another may
// replace the sink, so the sink is held as an immutable snapshot: a writer
// takes a reference under the lock and calls it outside, and SetSink swaps
// the pointer under the lock. A snapshot in use stays alive until its last
// caller returns, also when it was replaced meanwhile or replaced itself.
struct SinkSlot {
  std::mutex mutex;
  std::shared_ptr<const Sink> sink;
};

// Never destroyed: lines may still be written from static destructors.
SinkSlot& slot() {
  static SinkSlot* const instance = new SinkSlot();
  return *instance;
}

std::shared_ptr<const Sink> current_sink() {
  SinkSlot& s = slot();
  std::lock_guard<std::mutex> lock(s.mutex);
  return s.sink;
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

Sink SetSink(Sink sink) {
  std::shared_ptr<const Sink> next;
  if (sink) next = std::make_shared<Sink>(std::move(sink));
  std::shared_ptr<const Sink> previous;
  {
    SinkSlot& s = slot();
    std::lock_guard<std::mutex> lock(s.mutex);
    previous = std::exchange(s.sink, std::move(next));
  }
  // A copy: a writer may still be running the previous sink.
  return previous ? *previous : Sink();
}

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
  // A snapshot: the sink may be replaced (by another thread, or by itself
  // through SetSink) while it runs; the snapshot keeps it alive until then.
  const std::shared_ptr<const Olk::Log::Sink> sink = Olk::Log::current_sink();
  if (sink) {
    Olk::Log::in_sink = true;
    struct Reset {
      ~Reset() { Olk::Log::in_sink = false; }
    } reset;
    (*sink)(level, mod, text);
  } else {
    Olk::Log::DefaultSink(level, mod, text);
  }
  return static_cast<int>(text.size());
}
