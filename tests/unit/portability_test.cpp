// Texts that must read the same on every platform and build machine:
// integer literals at each type's extremes (long has 32 bits on Windows and
// 64 on Linux) and the source file of a log line (relative to the root).
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "support/CaptureLog.h"
#include "vexel/vexel.h"

namespace {

// "<min>|<max>|<max as an equality>", rendered through SQLValue and col.
template <typename T>
std::string extremes() {
  using limits = std::numeric_limits<T>;
  const vexel::Ptr_CommonExpr eq = vexel::col("c") == limits::max();
  return vexel::SQLValue(limits::min()).GetValue() + "|" +
         vexel::SQLValue(limits::max()).GetValue() + "|" + eq.GetExpr(tessel::DB_SQLSERVER);
}

TEST(Portability, IntegerExtremesAreExact) {
  const bool wide = sizeof(long) == 8;
  const std::string i64 = "-9223372036854775808|9223372036854775807|c = 9223372036854775807";
  const std::string u64 = "0|18446744073709551615|c = 18446744073709551615";
  const std::string i32 = "-2147483648|2147483647|c = 2147483647";
  const std::string u32 = "0|4294967295|c = 4294967295";
  EXPECT_EQ(extremes<short>(), "-32768|32767|c = 32767");
  EXPECT_EQ(extremes<unsigned short>(), "0|65535|c = 65535");
  EXPECT_EQ(extremes<int>(), i32);
  EXPECT_EQ(extremes<unsigned int>(), u32);
  EXPECT_EQ(extremes<long>(), wide ? i64 : i32);
  EXPECT_EQ(extremes<unsigned long>(), wide ? u64 : u32);
  EXPECT_EQ(extremes<long long>(), i64);
  EXPECT_EQ(extremes<unsigned long long>(), u64);
}

TEST(Portability, LogLineNamesTheSourceFromTheProjectRoot) {
  vexel_test::CaptureLog log;
  vexel::QueryBuilder q(nullptr);
  ASSERT_EQ(log.lines().size(), 1u);
  const std::string& text = log.lines()[0].text;
  EXPECT_NE(text.find(".[src/QueryBuilder.cpp("), std::string::npos) << text;
}

}  // namespace
