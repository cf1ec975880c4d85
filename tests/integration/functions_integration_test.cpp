// The SQL functions SQLiteConnect registers, checked against PostgreSQL's
// own operators on the same inputs, and their behaviour on bad input.
#include <chrono>

#include "Engines.h"

namespace vexel_it {
namespace {

std::string error_of(tessel::CConnect& c) {
  std::string info;
  c.GetLastError(info);
  return info;
}

// (text, pattern) pairs whose patterns mean the same to ICU and to
// PostgreSQL's regular expressions.
const std::vector<std::pair<std::string, std::string>> kRegexpCases = {
    {"Apple pie", "^apple"},
    {"Apple pie", "^Apple"},
    {"apple pie", "PIE$"},
    {"banana", "an(an)+a"},
    {"banana", "^b.n"},
    {"colour", "colou?r"},
    {"COLOR", "colou?r"},
    {"item 42", "[0-9]+$"},
    {"item", "[0-9]"},
    {"line1\nline2", "1.line"},
    {"École", "école"},
    {"ÉCOLE", "^éc"},
    {"", "^$"},
    {"a.b", "a\\.b"},
    {"axb", "a\\.b"},
    {"x", "(a|x|y)"},
};

// SQLite: regexp(text, pattern, mode) for modes 0..3.
// PostgreSQL: ~*, ~, !~*, !~ on the same pairs.
TEST(PostgresCrossCheck, RegexpModesMatchPostgresOperators) {
  const std::string conninfo = PgConnInfo();
  if (conninfo.empty()) GTEST_SKIP() << "no PostgreSQL server";
  tessel::SQLiteConnect lite(":memory:");
  tessel::PGConnect pg(conninfo);
  ASSERT_TRUE(pg.IsOpen()) << error_of(pg);
  const std::vector<std::string> columns = {"m0", "m1", "m2", "m3"};
  for (const auto& [text, pattern] : kRegexpCases) {
    SCOPED_TRACE(text + " / " + pattern);
    const std::string t = "'" + text + "'";
    const std::string p = "'" + pattern + "'";
    ASSERT_TRUE(lite.ExecuteQuery("SELECT regexp(" + t + ", " + p + ", 0) AS m0, regexp(" + t +
                                  ", " + p + ", 1) AS m1, regexp(" + t + ", " + p +
                                  ", 2) AS m2, regexp(" + t + ", " + p + ", 3) AS m3"))
        << error_of(lite);
    Rows lite_rows = ReadRows(lite, columns);
    ASSERT_TRUE(pg.ExecuteQuery("SELECT (" + t + " ~* " + p + ")::int AS m0, (" + t + " ~ " + p +
                                ")::int AS m1, (" + t + " !~* " + p + ")::int AS m2, (" + t +
                                " !~ " + p + ")::int AS m3"))
        << error_of(pg);
    EXPECT_EQ(lite_rows, ReadRows(pg, columns));
  }
}

struct BitCase {
  const char* a;
  const char* b;
  int n;
};

const BitCase kBitCases[] = {
    {"1100", "1010", 1}, {"1", "0", 1},       {"10110011", "01101110", 3}, {"0000", "1111", 0},
    {"1011", "0110", 4}, {"1011", "0110", 9}, {"1011", "0110", -1},        {"", "", 2},
};

TEST(PostgresCrossCheck, BitStringFunctionsMatchPostgresOperators) {
  const std::string conninfo = PgConnInfo();
  if (conninfo.empty()) GTEST_SKIP() << "no PostgreSQL server";
  tessel::SQLiteConnect lite(":memory:");
  tessel::PGConnect pg(conninfo);
  ASSERT_TRUE(pg.IsOpen()) << error_of(pg);
  const std::vector<std::string> columns = {"a", "o", "x", "na", "l", "r"};
  for (const BitCase& c : kBitCases) {
    const std::string a = std::string("'") + c.a + "'";
    const std::string b = std::string("'") + c.b + "'";
    const std::string n = std::to_string(c.n);
    SCOPED_TRACE(a + " " + b + " " + n);
    ASSERT_TRUE(lite.ExecuteQuery("SELECT str_bit_and(" + a + ", " + b + ") AS a, str_bit_or(" + a +
                                  ", " + b + ") AS o, str_bit_xor(" + a + ", " + b +
                                  ") AS x, str_bit_not(" + a + ") AS na, str_bit_shift_left(" + a +
                                  ", " + n + ") AS l, str_bit_shift_right(" + a + ", " + n +
                                  ") AS r"))
        << error_of(lite);
    Rows lite_rows = ReadRows(lite, columns);
    const std::string pa = a + "::varbit";
    const std::string pb = b + "::varbit";
    ASSERT_TRUE(pg.ExecuteQuery("SELECT (" + pa + " & " + pb + ")::text AS a, (" + pa + " | " + pb +
                                ")::text AS o, (" + pa + " # " + pb + ")::text AS x, (~" + pa +
                                ")::text AS na, (" + pa + " << " + n + ")::text AS l, (" + pa +
                                " >> " + n + ")::text AS r"))
        << error_of(pg);
    EXPECT_EQ(lite_rows, ReadRows(pg, columns));
  }
}

TEST(PostgresCrossCheck, BadBitStringsFailOnBothEngines) {
  const std::string conninfo = PgConnInfo();
  if (conninfo.empty()) GTEST_SKIP() << "no PostgreSQL server";
  tessel::SQLiteConnect lite(":memory:");
  tessel::PGConnect pg(conninfo);
  struct Case {
    const char* sqlite;
    const char* postgres;
  };
  const Case cases[] = {
      {"SELECT str_bit_and('101', '1')", "SELECT B'101' & B'1'"},
      {"SELECT str_bit_or('10', '101')", "SELECT B'10' | B'101'"},
      {"SELECT str_bit_xor('1', '')", "SELECT B'1' # B''"},
      {"SELECT str_bit_not('12')", "SELECT ~ '12'::varbit"},
      {"SELECT str_bit_and('1a', '10')", "SELECT '1a'::varbit & B'10'"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sqlite);
    EXPECT_FALSE(lite.ExecuteQuery(c.sqlite));
    EXPECT_FALSE(pg.ExecuteQuery(c.postgres));
  }
}

TEST(SqliteFunctions, NullInNullOut) {
  tessel::SQLiteConnect lite(":memory:");
  ASSERT_TRUE(lite.ExecuteQuery(
      "SELECT regexp(NULL, 'a', 0) IS NULL AS r1, regexp('a', NULL, 1) IS NULL AS r2, "
      "regexp('a', 'a', NULL) IS NULL AS r3, str_bit_and(NULL, '1') IS NULL AS b1, "
      "str_bit_not(NULL) IS NULL AS b2, str_bit_shift_left('1', NULL) IS NULL AS b3"));
  EXPECT_EQ(ReadRows(lite, {"r1", "r2", "r3", "b1", "b2", "b3"}),
            (Rows{{"1", "1", "1", "1", "1", "1"}}));
}

TEST(SqliteFunctions, BadArgumentsAreSqlErrors) {
  tessel::SQLiteConnect lite(":memory:");
  struct Case {
    const char* sql;
    const char* message;
  };
  const Case cases[] = {
      {"SELECT regexp('a', 'a', 4)", "regexp: mode must be 0, 1, 2 or 3"},
      {"SELECT regexp('a', 'a', 'x')", "regexp: mode must be 0, 1, 2 or 3"},
      {"SELECT regexp('a', '[a', 1)", "regexp: invalid pattern '[a'"},
      {"SELECT str_bit_shift_left('101', 'two')", "the shift count must be an integer"},
      {"SELECT str_bit_shift_right('101', 1.5)", "the shift count must be an integer"},
      {"SELECT str_bit_and('101', '1')", "bit strings of different lengths (3 and 1)"},
      {"SELECT str_bit_not('1 0')", "is not a bit string"},
      {"SELECT regexp('a', 'a')", "wrong number of arguments"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sql);
    EXPECT_FALSE(lite.ExecuteQuery(c.sql));
    EXPECT_NE(error_of(lite).find(c.message), std::string::npos) << error_of(lite);
  }
}

TEST(SqliteFunctions, RunawayPatternsStopWithAnError) {
  tessel::SQLiteConnect lite(":memory:");
  const auto start = std::chrono::steady_clock::now();
  // Nested quantifiers over a long non-matching text backtrack
  // exponentially; the engine's limits turn that into an error.
  EXPECT_FALSE(lite.ExecuteQuery("SELECT regexp(printf('%.*c', 40, 'a') || 'b', '^(a+)+$', 1)"));
  EXPECT_NE(error_of(lite).find("regexp: matching stopped"), std::string::npos) << error_of(lite);
  // A very long text with a pattern that keeps a frame per character.
  EXPECT_FALSE(lite.ExecuteQuery("SELECT regexp(printf('%.*c', 5000000, 'a'), '^(a|b)*c', 1)"));
  EXPECT_NE(error_of(lite).find("regexp: matching stopped"), std::string::npos) << error_of(lite);
  EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 60.0);
  // A long text with a well-behaved pattern still matches.
  ASSERT_TRUE(
      lite.ExecuteQuery("SELECT regexp(printf('%.*c', 1000000, 'a') || 'end', 'a+end$', 1) AS m"));
  EXPECT_EQ(lite.GetFieldInt("m"), 1);
}

TEST(SqliteFunctions, FullUnicodeCaseFolding) {
  // ICU folds "ß" to "ss" when ignoring case; PostgreSQL's ~* compares
  // character by character and does not (see docs/dialect-notes.md).
  tessel::SQLiteConnect lite(":memory:");
  ASSERT_TRUE(
      lite.ExecuteQuery("SELECT regexp('straße', 'STRASSE', 0) AS ci, "
                        "regexp('straße', 'STRASSE', 1) AS cs"));
  EXPECT_EQ(ReadRows(lite, {"ci", "cs"}), (Rows{{"1", "0"}}));
}

TEST(SqliteFunctions, PatternCachedAcrossRowsFollowsMode) {
  // The compiled pattern is cached per statement; a mode that changes from
  // row to row must still be honoured.
  tessel::SQLiteConnect lite(":memory:");
  ASSERT_TRUE(lite.ExecuteQuery(
      "SELECT group_concat(regexp('ABC', 'abc', m), '') AS r FROM "
      "(SELECT 0 AS m UNION ALL SELECT 1 UNION ALL SELECT 2 UNION ALL SELECT 3 UNION ALL "
      "SELECT 0)"));
  EXPECT_EQ(lite.GetFieldString("r"), "10011");
}

}  // namespace
}  // namespace vexel_it
