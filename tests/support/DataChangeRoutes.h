// The execution check shared by the data-change builders: for each case,
// once succeeding and once failing, which connection operation receives
// which text, the exact failure line, and one GetLastError per failure.
#ifndef VEXEL_TESTS_DATACHANGEROUTES_H
#define VEXEL_TESTS_DATACHANGEROUTES_H

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/CaptureLog.h"
#include "support/Dialects.h"

namespace vexel_test {

struct DataChangeRoute {
  int code;
  bool returning;
  const char* op;    // connection operation reached
  const char* site;  // implementation class named in the log line
  std::string sql;   // text passed
};

// `execute(conn, returning)` builds the statement on `conn` and executes it.
inline void check_routes(
    const std::vector<DataChangeRoute>& cases,
    const std::function<bool(const std::shared_ptr<FakeConnect>&, bool)>& execute) {
  for (const auto& tc : cases) {
    for (bool fail : {false, true}) {
      auto conn = fake(tc.code);
      if (fail) conn->FailOn(tc.op);
      CaptureLog log;
      EXPECT_EQ(execute(conn, tc.returning), !fail) << tc.code;
      EXPECT_EQ(conn->statements(), std::vector<std::string>{tc.op + (":" + tc.sql)});
      const std::vector<std::string> lines =
          fail ? std::vector<std::string>{"5|[vexel::" + std::string(tc.site) +
                                          "::" + (tc.returning ? "ExecuteReturning" : "Execute") +
                                          "]ExecuteQuery failed errorcode:42.error_info:boom,sql:" +
                                          tc.sql + ".["}
               : std::vector<std::string>{};
      EXPECT_EQ(log.texts(), lines) << tc.code;
      EXPECT_EQ(conn->count("GetLastError"), fail ? 1 : 0);
    }
  }
}

}  // namespace vexel_test

#endif  // VEXEL_TESTS_DATACHANGEROUTES_H
