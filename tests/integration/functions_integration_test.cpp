// The SQL functions SQLiteConnect registers, checked against PostgreSQL's
// own operators on the same inputs, and their behaviour on bad input.
#include <chrono>
#include <cstdint>
#include <random>

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
    {"abc", ""},
    {"", ""},
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

TEST(SqliteFunctions, PatternFromEachRowIsCompiledForThatRow) {
  // Only a constant pattern may be cached across rows.
  tessel::SQLiteConnect lite(":memory:");
  ASSERT_TRUE(lite.ExecuteQuery(
      "SELECT group_concat(regexp('abc', p, 1), '') AS r FROM (SELECT 'a' AS p UNION ALL SELECT "
      "'x' UNION ALL SELECT '^b' UNION ALL SELECT 'c$' UNION ALL SELECT 'x')"))
      << error_of(lite);
  EXPECT_EQ(lite.GetFieldString("r"), "10010");
}

TEST(SqliteFunctions, NulBytesInsideValues) {
  tessel::SQLiteConnect lite(":memory:");
  ASSERT_TRUE(lite.ExecuteQuery(
      "SELECT 'a' || char(0) || 'b' AS v, regexp('a' || char(0) || 'b', '^a.b$', 1) AS m"))
      << error_of(lite);
  EXPECT_EQ(lite.GetFieldString("v"), std::string("a\0b", 3));
  EXPECT_EQ(lite.GetFieldInt("m"), 1);
  // The error names the bad byte instead of ending at it.
  const std::pair<const char*, const char*> bad[] = {
      {"SELECT str_bit_not('1' || char(0) || '0')", "str_bit_not: \"1\\00\" is not a bit string"},
      {"SELECT regexp('a', '(' || char(0), 1)", "regexp: invalid pattern '(\\0'"},
  };
  for (const auto& [sql, message] : bad) {
    SCOPED_TRACE(sql);
    EXPECT_FALSE(lite.ExecuteQuery(sql));
    EXPECT_NE(error_of(lite).find(message), std::string::npos) << error_of(lite);
  }
}

TEST(SqliteFunctions, TenMegabyteArguments) {
  tessel::SQLiteConnect lite(":memory:");
  const std::string ten_mb = "printf('%.*c', 10000000, '1')";
  ASSERT_TRUE(lite.ExecuteQuery(
      "SELECT length(str_bit_not(" + ten_mb + ")) AS n, instr(str_bit_not(" + ten_mb +
      "), '1') AS ones, length(str_bit_shift_left(" + ten_mb + ", 9999999)) AS l"))
      << error_of(lite);
  EXPECT_EQ(ReadRows(lite, {"n", "ones", "l"}), (Rows{{"10000000", "0", "10000000"}}));
  // Errors quote a huge argument or pattern only in part.
  const std::vector<std::string> bad = {
      "SELECT str_bit_not(" + ten_mb + " || '2')",
      "SELECT regexp('a', '(' || printf('%.*c', 10000000, 'a'), 1)",
  };
  for (const std::string& sql : bad) {
    SCOPED_TRACE(sql);
    EXPECT_FALSE(lite.ExecuteQuery(sql));
    EXPECT_LT(error_of(lite).size(), 200u);
  }
}

// The bit-string functions against a direct implementation, on random
// strings, lengths and shift counts (the extremes of 64-bit counts included).
std::string reference_shift(const std::string& a, long double count) {
  std::string out(a.size(), '0');
  const long double size = static_cast<long double>(a.size());
  for (size_t i = 0; i < a.size(); ++i) {
    const long double from = static_cast<long double>(i) + count;
    if (from >= 0 && from < size) out[i] = a[static_cast<size_t>(from)];
  }
  return out;
}

TEST(SqliteFunctions, RandomBitStringsMatchReference) {
  tessel::SQLiteConnect lite(":memory:");
  std::mt19937_64 random(20261122);
  const int64_t extremes[] = {INT64_MIN, INT64_MIN + 1, INT64_MAX, INT32_MIN, INT32_MAX, 0};
  for (int round = 0; round < 300; ++round) {
    const size_t length = random() % 40;
    std::string a;
    std::string b;
    for (size_t i = 0; i < length; ++i) {
      a += random() % 2 ? '1' : '0';
      b += random() % 2 ? '1' : '0';
    }
    const int64_t n =
        round % 5 == 0 ? extremes[random() % 6] : static_cast<int64_t>(random() % 50) - 25;
    std::string and_, or_, xor_, not_;
    for (size_t i = 0; i < length; ++i) {
      and_ += (a[i] == '1' && b[i] == '1') ? '1' : '0';
      or_ += (a[i] == '1' || b[i] == '1') ? '1' : '0';
      xor_ += a[i] != b[i] ? '1' : '0';
      not_ += a[i] == '1' ? '0' : '1';
    }
    const Rows expected = {{and_, or_, xor_, not_, reference_shift(a, n),
                            reference_shift(a, -static_cast<long double>(n))}};
    const std::string qa = "'" + a + "'";
    const std::string qb = "'" + b + "'";
    const std::string qn = std::to_string(n);
    const std::string sql = "SELECT str_bit_and(" + qa + ", " + qb + ") AS a, str_bit_or(" + qa +
                            ", " + qb + ") AS o, str_bit_xor(" + qa + ", " + qb +
                            ") AS x, str_bit_not(" + qa + ") AS n, str_bit_shift_left(" + qa +
                            ", " + qn + ") AS l, str_bit_shift_right(" + qa + ", " + qn + ") AS r";
    SCOPED_TRACE(sql);
    ASSERT_TRUE(lite.ExecuteQuery(sql)) << error_of(lite);
    ASSERT_EQ(ReadRows(lite, {"a", "o", "x", "n", "l", "r"}), expected);
  }
}

}  // namespace
}  // namespace vexel_it
