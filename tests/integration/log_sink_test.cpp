// The default logging library's sink: sinks that log or replace themselves.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "olk/Log.h"
#include "olk/LogSink.h"

namespace {

TEST(LogSink, LineWrittenFromInsideTheSinkGoesToTheDefaultSink) {
  std::vector<std::string> seen;
  Olk::Log::Sink previous =
      Olk::Log::SetSink([&seen](int level, const std::string& module, const std::string& text) {
        seen.push_back(text);
        // A sink that logs its own trouble must not call itself again.
        write_log(level, module.c_str(), "sink saw: %s", text.c_str());
      });
  testing::internal::CaptureStderr();
  write_log(5, "Vexel", "[%s]first.[%s(%d)]", "f", "file.cpp", 1);
  const std::string err = testing::internal::GetCapturedStderr();
  Olk::Log::SetSink(previous);
  EXPECT_EQ(seen, std::vector<std::string>{"[f]first.[file.cpp(1)]"});
  EXPECT_EQ(err, "[Vexel] sink saw: [f]first.[file.cpp(1)]\n");
}

TEST(LogSink, SinkMayReplaceItselfWhileRunning) {
  std::vector<std::string> seen;
  // The captured state lives only in the installed function: replacing the
  // sink destroys it unless the call runs on a copy.
  auto owned = std::make_shared<std::vector<std::string>>();
  Olk::Log::Sink previous =
      Olk::Log::SetSink([owned, &seen](int, const std::string&, const std::string& text) {
        Olk::Log::SetSink([&seen](int, const std::string&, const std::string& t) {
          seen.push_back("second:" + t);
        });
        owned->push_back(text);
        seen.push_back("first:" + text + ":" + std::to_string(owned->size()));
      });
  owned.reset();
  write_log(3, "Vexel", "one");
  write_log(3, "Vexel", "two");
  Olk::Log::SetSink(previous);
  EXPECT_EQ(seen, (std::vector<std::string>{"first:one:1", "second:two"}));
}

}  // namespace
