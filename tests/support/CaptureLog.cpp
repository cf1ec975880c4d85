#include "support/CaptureLog.h"

namespace vexel_test {

CaptureLog::CaptureLog() {
  previous_ =
      Olk::Log::SetSink([this](int level, const std::string& module, const std::string& text) {
        lines_.push_back({level, module, text});
      });
}

CaptureLog::~CaptureLog() { Olk::Log::SetSink(previous_); }

std::vector<std::string> CaptureLog::texts() const {
  std::vector<std::string> out;
  for (const LogLine& line : lines_) {
    out.push_back(std::to_string(line.level) + "|" + without_position(line.text));
  }
  return out;
}

std::string without_position(const std::string& text) {
  const size_t open = text.rfind('[');
  if (open == std::string::npos || text.empty() || text.back() != ']') return text;
  return text.substr(0, open + 1);
}

}  // namespace vexel_test
