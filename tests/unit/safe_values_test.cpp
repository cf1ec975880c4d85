// Safe values and quoted names: the literal and the name each dialect gets,
// the values refused, and a statement with a refused value never run.
#include <gtest/gtest.h>

#include <cfloat>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>

#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel::SafeValue;
using vexel_test::CaptureLog;
using vexel_test::db;
using vexel_test::fake;
using vexel_test::kDialects;
using vexel_test::PerDialect;

struct Literal {
  SafeValue value;
  PerDialect text;
};

TEST(SafeValues, LiteralPerDialect) {
  using std::chrono::milliseconds;
  const auto epoch = std::chrono::system_clock::time_point();
  const Literal cases[] = {
      {"O'Brien's", vexel_test::all("'O''Brien''s'")},
      {"\xc3\xa9t\xc3\xa9",
       {"'\xc3\xa9t\xc3\xa9'", "'\xc3\xa9t\xc3\xa9'", "N'\xc3\xa9t\xc3\xa9'",
        "'\xc3\xa9t\xc3\xa9'"}},
      {"a\\\nb'", {"'a\\\nb'''", "'a\\\nb'''", "'a\\'+CHAR(10)+'b'''", "'a\\\nb'''"}},
      {true, {"1", "TRUE", "1", "TRUE"}},
      {false, {"0", "FALSE", "0", "FALSE"}},
      {nullptr, vexel_test::all("NULL")},
      {std::numeric_limits<std::int64_t>::min(), vexel_test::all("-9223372036854775808")},
      {std::numeric_limits<std::uint64_t>::max(), vexel_test::all("18446744073709551615")},
      {static_cast<short>(-7), vexel_test::all("-7")},
      {1e-7, vexel_test::all("1e-07")},
      {123456789.123456789, vexel_test::all("123456789.12345679")},
      {-0.0,
       {"-0.0", "CAST('-0' AS DOUBLE PRECISION)", "CAST('-0' AS FLOAT)",
        "CAST('-0' AS DOUBLE PRECISION)"}},
      {DBL_MAX, vexel_test::all("1.7976931348623157e+308")},
      {epoch + milliseconds(1500), vexel_test::all("'1970-01-01 00:00:01.500000'")},
      {epoch - milliseconds(1), vexel_test::all("'1969-12-31 23:59:59.999000'")},
      {SafeValue::date(2024, 2, 29), vexel_test::all("'2024-02-29'")},
      {SafeValue::date(9999, 12, 31), vexel_test::all("'9999-12-31'")},
  };
  for (const Literal& c : cases) {
    for (int code : kDialects) {
      EXPECT_EQ(c.value.GetExpr(db(code)), c.text.at(code)) << c.text.postgres << " in " << code;
      // Converted to an SQLValue, it keeps every dialect's form.
      EXPECT_EQ(vexel::SQLValue(c.value).GetExpr(db(code)), c.text.at(code));
    }
  }
}

TEST(SafeValues, RefusedValuesLogOnceAndNothingRuns) {
  CaptureLog made;
  const SafeValue refused[] = {
      SafeValue(std::string("a\0b", 3)),
      SafeValue("\xff"),
      SafeValue("\xc0\xaf"),
      SafeValue("\xed\xa0\x80"),
      SafeValue("\xe2\x82"),
      SafeValue(std::nan("")),
      SafeValue(-HUGE_VAL),
      SafeValue::date(2023, 2, 29),
      SafeValue("\xf4\x90\x80\x80"),
  };
  for (const SafeValue& v : refused) EXPECT_FALSE(v.ok());
  EXPECT_TRUE(made.lines().empty());
  for (const SafeValue& v : refused) {
    CaptureLog log;
    auto conn = fake(2);
    vexel::InsertBuilder ins(conn);
    ins.INSERT_INTO(vexel::tab("t")).COLUMNS({vexel::col("c")}).VALUES({SafeValue(v)});
    EXPECT_FALSE(ins.Execute());
    vexel::DeleteBuilder del(conn);
    EXPECT_FALSE(del.DELETE_FROM(vexel::tab("t")).WHERE(vexel::col("c") == v).Execute());
    for (const auto& call : conn->calls()) EXPECT_EQ(call.sql, "");
    // One line for each refused Execute, with the reason.
    ASSERT_EQ(log.lines().size(), 2u);
    EXPECT_NE(log.texts()[0].find("value refused: "), std::string::npos) << log.texts()[0];
  }
}

// Statements take each value in their own dialect: VALUES and SET in the
// builder's, conditions in the column's.
TEST(SafeValues, StatementsAndLists) {
  const PerDialect insert{
      "INSERT INTO t(a,b) VALUES(1,'\xc3\xa9')",
      "INSERT INTO t(a,b) VALUES(TRUE,'\xc3\xa9')",
      "INSERT INTO t(a,b) VALUES (1,N'\xc3\xa9')",
      "INSERT INTO t(a,b) VALUES(TRUE,'\xc3\xa9')",
  };
  for (int code : kDialects) {
    vexel::InsertBuilder ins(fake(code));
    ins.INSERT_INTO(vexel::tab("t")).COLUMNS({vexel::col("a"), vexel::col("b")});
    ins.VALUES({SafeValue(true), SafeValue("\xc3\xa9")});
    EXPECT_EQ(ins.tosql(), insert.at(code));
  }
  const PerDialect placeholders{"?1 ?2", "$1 $2", "@p1 @p2", "$1 $2"};
  for (int code : kDialects) {
    vexel::Params p(db(code));
    const std::string first = p(2.5).GetValue();
    EXPECT_EQ(first + " " + p("x").GetValue(), placeholders.at(code));
    EXPECT_EQ(p(SafeValue("\xff")).GetValue(), SafeValue("\xff").GetExpr(db(2)));
    ASSERT_EQ(p.values().size(), 2u);
    EXPECT_EQ(p.values()[0].kind, tessel::Param::Kind::kReal);
    EXPECT_EQ(p.values()[1].text, "x");
  }
  vexel::col c("c");
  c.set_db_type(tessel::DB_SQLSERVER);
  EXPECT_EQ(c.in_values({1, "it's", nullptr}).GetExpr(db(2)), "c IN (1,'it''s',NULL)");
  EXPECT_EQ(c.in_values({}).GetExpr(db(2)), "1 = 0");
  EXPECT_EQ(c.not_in_values({true}).GetExpr(db(2)), "c NOT IN (1)");
  EXPECT_EQ(c.not_in_values({}).GetExpr(db(2)), "1 = 1");
  EXPECT_EQ(c.like_escaped(SafeValue::escape_like("50%_o'k!", '!') + "%", '!').GetExpr(db(2)),
            "c LIKE '50!%!_o''k!!%' ESCAPE '!'");
  EXPECT_EQ((c == SafeValue(false)).GetExpr(db(2)), "c = 0");
}

TEST(SafeValues, QuotedNames) {
  const std::pair<const char*, PerDialect> cases[] = {
      {"orders", vexel_test::all("orders")},
      {"Orders", {"Orders", "\"Orders\"", "Orders", "\"Orders\""}},
      {"order", {"\"order\"", "\"order\"", "[order]", "\"order\""}},
      {"top", {"top", "top", "[top]", "top"}},
      {"Order Items", {"\"Order Items\"", "\"Order Items\"", "[Order Items]", "\"Order Items\""}},
      {"a\"b]; DROP",
       {"\"a\"\"b]; DROP\"", "\"a\"\"b]; DROP\"", "[a\"b]]; DROP]", "\"a\"\"b]; DROP\""}},
      {"1st", {"\"1st\"", "\"1st\"", "[1st]", "\"1st\""}},
      {"", vexel_test::all("")},
  };
  for (const auto& c : cases) {
    for (int code : kDialects) EXPECT_EQ(vexel::quote_name(c.first, db(code)), c.second.at(code));
  }
}

}  // namespace
