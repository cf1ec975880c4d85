#include "Checks.h"

#include <cstdio>
#include <cstdlib>

#include "olk/LogSink.h"

namespace vexel_fuzz {
namespace {

// The targets run one input at a time on one thread.
LogCounts counts;

void check_line(int level, const std::string& module, const std::string& text) {
  if (level < 2 || level > 6) finding("log line with level " + std::to_string(level));
  if (module != "Vexel") finding("log line with module \"" + module + "\"");
  // "[function]message.[file(line)]": hosts split lines on these brackets.
  if (text.size() < 4 || text.front() != '[' || text.compare(text.size() - 2, 2, ")]") != 0) {
    finding("log line of another shape: " + text);
  }
  counts.by_level[level]++;
}

}  // namespace

void finding(const std::string& what) {
  std::fprintf(stderr, "vexel fuzz finding: %s\n", what.c_str());
  std::fflush(stderr);
  std::abort();
}

void install_checking_sink() {
  static const bool installed = [] {
    Olk::Log::SetSink(check_line);
    return true;
  }();
  (void)installed;
}

LogCounts log_counts() { return counts; }

void allowed_exception(const std::string& thrown) {
  static const std::string kPrefix = "invaild param, values size = ";
  const bool prefixed = thrown.compare(0, kPrefix.size(), kPrefix) == 0;
  const std::string count = prefixed ? thrown.substr(kPrefix.size()) : std::string();
  const bool number = !count.empty() && count.find_first_not_of("0123456789") == std::string::npos;
  // Exactly one row is the form that renders; any other count throws.
  if (!number || count == "1") finding("exception escaped: \"" + thrown + "\"");
}

}  // namespace vexel_fuzz
