// Captures the lines written through the default logging library while in
// scope, and puts the previous sink back afterwards.
#ifndef VEXEL_TESTS_CAPTURELOG_H
#define VEXEL_TESTS_CAPTURELOG_H

#include <string>
#include <vector>

#include "olk/LogSink.h"

namespace vexel_test {

struct LogLine {
  int level;
  std::string module;
  std::string text;
};

class CaptureLog {
 public:
  CaptureLog();
  ~CaptureLog();
  CaptureLog(const CaptureLog&) = delete;
  CaptureLog& operator=(const CaptureLog&) = delete;

  const std::vector<LogLine>& lines() const { return lines_; }
  // The texts only, "level|text" each, for compact assertions.
  std::vector<std::string> texts() const;
  void clear() { lines_.clear(); }

 private:
  std::vector<LogLine> lines_;
  Olk::Log::Sink previous_;
};

// "[function]message.[" with the file and line cut off: the source position
// of a line changes with every edit, so tests compare the rest.
std::string without_position(const std::string& text);

}  // namespace vexel_test

#endif  // VEXEL_TESTS_CAPTURELOG_H
