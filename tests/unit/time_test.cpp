// Time functions: PostgreSQL and SQLite texts, SQL Server and unknown codes
// empty except CURRENT_TIMESTAMP.
#include <gtest/gtest.h>

#include <map>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::fake;
using vexel_test::kDialects;
using vexel_test::PerDialect;

// SQLite and PostgreSQL texts; nothing for SQL Server and unknown codes.
PerDialect two(const std::string& sqlite, const std::string& postgres) {
  return {sqlite, postgres, "", ""};
}

struct TimeCase {
  const char* name;
  vexel::TimeExpr expr;
  PerDialect expected;
};

void check(const TimeCase& k) {
  for (int code : kDialects) {
    EXPECT_EQ(k.expr.GetExpr(db(code)), k.expected.at(code)) << k.name << " @" << code;
  }
}

TEST(Time, Clocks) {
  const std::string utc = "CURRENT_TIMESTAMP at time zone 'UTC'";
  const TimeCase cases[] = {
      {"now UTC", vexel::NOW(0), two("DATETIME('now')", "now() at time zone 'UTC'")},
      {"now local", vexel::NOW(1), two("DATETIME('now','localtime')", "now()")},
      {"now other zone", vexel::NOW(2), two("DATETIME('now')", "now()")},
      {"now negative zone", vexel::NOW(-1), two("DATETIME('now')", "now()")},
      // CURRENT_TIMESTAMP is the one function SQL Server gets a text for.
      {"current timestamp UTC", vexel::CURRENT_TIMESTAMP(0), {"CURRENT_TIMESTAMP", utc, utc, utc}},
      {"current timestamp local",
       vexel::CURRENT_TIMESTAMP(1),
       {"datetime(CURRENT_TIMESTAMP,'localtime')", "CURRENT_TIMESTAMP", "CURRENT_TIMESTAMP",
        "CURRENT_TIMESTAMP"}},
      {"current timestamp other zone", vexel::CURRENT_TIMESTAMP(7),
       vexel_test::all("CURRENT_TIMESTAMP")},
  };
  for (const auto& k : cases) check(k);
}

TEST(Time, Values) {
  const char* day = "2021-01-02 03:04:05";
  const TimeCase cases[] = {
      {"date", vexel::DATE("2021-01-02"), two("DATE('2021-01-02')", "date '2021-01-02'")},
      {"time", vexel::TIME("03:04"), two("TIME('03:04')", "time '03:04'")},
      {"extract", vexel::EXTRACT(day),
       two("strftime('%s','2021-01-02 03:04:05')",
           "extract(epoch from timestamp without time zone '2021-01-02 03:04:05')")},
      {"date part year", vexel::DATE_PART(vexel::YEAR, "2021-01-02"),
       two("strftime('%Y', '2021-01-02')", "date_part('year', TIMESTAMP '2021-01-02')")},
      {"date part month", vexel::DATE_PART(vexel::MONTH, day),
       two("strftime('%m', '2021-01-02 03:04:05')",
           "date_part('month', TIMESTAMP '2021-01-02 03:04:05')")},
      {"date part day", vexel::DATE_PART(vexel::DAY, "d"),
       two("strftime('%d', 'd')", "date_part('day', TIMESTAMP 'd')")},
      {"date part hour", vexel::DATE_PART(vexel::HOUR, "d"),
       two("strftime('%H', 'd')", "date_part('hour', TIMESTAMP 'd')")},
      {"date part minute", vexel::DATE_PART(vexel::MINUTE, "d"),
       two("strftime('%M', 'd')", "date_part('minute', TIMESTAMP 'd')")},
      {"date part second", vexel::DATE_PART(vexel::SECOND, "d"),
       two("strftime('%S', 'd')", "date_part('second', TIMESTAMP 'd')")},
      {"date part unit 0", vexel::DATE_PART(static_cast<vexel::TimeType>(0), "d"),
       vexel_test::all("")},
      {"date part unit 7", vexel::DATE_PART(static_cast<vexel::TimeType>(7), "d"),
       vexel_test::all("")},
  };
  for (const auto& k : cases) check(k);
}

// The value is not quoted: "::timestamp" follows a column or a literal the
// host quoted itself.
TEST(Time, DateTrunc) {
  const TimeCase cases[] = {
      {"year", vexel::DATE_TRUNC(vexel::YEAR, "t.c"),
       two("strftime('%Y-01-01 00:00:00', t.c)", "date_trunc('year', t.c::timestamp)")},
      {"month", vexel::DATE_TRUNC(vexel::MONTH, "t.c"),
       two("strftime('%Y-%m-01 00:00:00', t.c)", "date_trunc('month', t.c::timestamp)")},
      {"day", vexel::DATE_TRUNC(vexel::DAY, "t.c"),
       two("strftime('%Y-%m-%d 00:00:00', t.c)", "date_trunc('day', t.c::timestamp)")},
      {"hour", vexel::DATE_TRUNC(vexel::HOUR, "t.c"),
       two("strftime('%Y-%m-%d %H:00:00', t.c)", "date_trunc('hour', t.c::timestamp)")},
      {"minute", vexel::DATE_TRUNC(vexel::MINUTE, "t.c"),
       two("strftime('%Y-%m-%d %H:%M:00', t.c)", "date_trunc('minute', t.c::timestamp)")},
      {"second", vexel::DATE_TRUNC(vexel::SECOND, "'2021-01-02 03:04:05'"),
       two("strftime('%Y-%m-%d %H:%M:%S', '2021-01-02 03:04:05')",
           "date_trunc('second', '2021-01-02 03:04:05'::timestamp)")},
      {"unit 0", vexel::DATE_TRUNC(static_cast<vexel::TimeType>(0), "t.c"), vexel_test::all("")},
      {"unit 7", vexel::DATE_TRUNC(static_cast<vexel::TimeType>(7), "t.c"), vexel_test::all("")},
  };
  for (const auto& k : cases) check(k);
}

TEST(Time, Differences) {
  vexel::sch s("s");
  s.set_db_type(tessel::DB_SQLITE);
  const vexel::col a = s.tab("t").col("a");
  const TimeCase cases[] = {
      {"texts", vexel::TIMEDIFF("2021-01-02", "2021-01-01"),
       two("strftime('%s', '2021-01-02') - strftime('%s', '2021-01-01')",
           "EXTRACT(EPOCH FROM timestamp '2021-01-02') - EXTRACT(EPOCH FROM timestamp "
           "'2021-01-01')")},
      // Columns go inside single quotes too, and keep the names only: the
      // SQLite column keeps its schema because the stored copy has the
      // default dialect.
      {"columns", vexel::TIMEDIFF(a, vexel::col("b")),
       two("strftime('%s', 's.t.a') - strftime('%s', 'b')",
           "EXTRACT(EPOCH FROM timestamp 's.t.a') - EXTRACT(EPOCH FROM timestamp 'b')")},
      {"column and text", vexel::TIMEDIFF(vexel::col("b"), "x"),
       two("strftime('%s', 'b') - strftime('%s', 'x')",
           "EXTRACT(EPOCH FROM timestamp 'b') - EXTRACT(EPOCH FROM timestamp 'x')")},
  };
  for (const auto& k : cases) check(k);
}

// Amounts of 0 or less lose their first character: -3 gives "3" after a
// minus, and 0 gives a subtraction of nothing.
TEST(Time, TimeAlgorithm) {
  const TimeCase cases[] = {
      {"add and subtract", vexel::TIME_ALGORITHM("x", {{"day", 1}, {"hour", -2}}),
       two("datetime('x', '+1 day', '-2 hour')",
           "timestamp 'x' + interval '1 day'- interval '2 hour'")},
      {"zero", vexel::TIME_ALGORITHM("x", {{"day", 0}}),
       two("datetime('x', '- day')", "timestamp 'x' - interval ' day'")},
      {"empty map keeps the trailing blank", vexel::TIME_ALGORITHM("x", {}),
       two("datetime('x')", "timestamp 'x' ")},
      {"key order, not insertion order",
       vexel::TIME_ALGORITHM(vexel::col("c"), {{"month", 10}, {"day", -30}}),
       two("datetime('c', '-30 day', '+10 month')",
           "timestamp 'c' - interval '30 day'+ interval '10 month'")},
      {"lowest int", vexel::TIME_ALGORITHM("x", {{"second", INT32_MIN}}),
       two("datetime('x', '-2147483648 second')", "timestamp 'x' - interval '2147483648 second'")},
  };
  for (const auto& k : cases) check(k);
}

// Rendered with the statement's dialect; SQL Server's SELECT carries no
// expression text, and an unknown code renders the PostgreSQL statement with
// an empty time text.
TEST(Time, InsideAStatement) {
  const PerDialect expected = {
      "SELECT DATETIME('now') FROM t",
      "SELECT now() at time zone 'UTC' FROM t",
      "SELECT  FROM t",
      "SELECT  FROM t",
  };
  for (int code : kDialects) {
    vexel::QueryBuilder q(fake(code));
    q.SELECT(vexel::NOW(0)).FROM(vexel::tab("t"));
    EXPECT_EQ(q.tosql(), expected.at(code)) << code;
  }
}

}  // namespace

namespace {

// Every mix of literal, string and column arguments resolves.
TEST(Time, ArgumentForms) {
  const std::string a = "a";
  const vexel::col c("c");
  const std::map<std::string, int> none;
  const struct {
    vexel::TimeExpr expr;
    const char* want;
  } cases[] = {
      {vexel::TIMEDIFF("a", "b"), "strftime('%s', 'a') - strftime('%s', 'b')"},
      {vexel::TIMEDIFF(a, "b"), "strftime('%s', 'a') - strftime('%s', 'b')"},
      {vexel::TIMEDIFF("a", std::string("b")), "strftime('%s', 'a') - strftime('%s', 'b')"},
      {vexel::TIMEDIFF(a, a), "strftime('%s', 'a') - strftime('%s', 'a')"},
      {vexel::TIMEDIFF(c, "b"), "strftime('%s', 'c') - strftime('%s', 'b')"},
      {vexel::TIMEDIFF(c, a), "strftime('%s', 'c') - strftime('%s', 'a')"},
      {vexel::TIMEDIFF(c, c), "strftime('%s', 'c') - strftime('%s', 'c')"},
      {vexel::TIMEDIFF("a", c), "strftime('%s', 'a') - strftime('%s', 'c')"},
      {vexel::TIME_ALGORITHM("a", none), "datetime('a')"},
      {vexel::TIME_ALGORITHM(a, none), "datetime('a')"},
      {vexel::TIME_ALGORITHM(c, none), "datetime('c')"},
  };
  for (const auto& k : cases) EXPECT_EQ(k.expr.GetExpr(tessel::DB_SQLITE), k.want);
}

}  // namespace
