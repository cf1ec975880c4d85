// Literal values and verbatim texts: fixed at construction, whatever
// dialect renders them.
#include <gtest/gtest.h>

#include <climits>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::kDialects;

TEST(Values, LiteralTexts) {
  const short s = -5;
  const unsigned short us = 65535;
  const long l = -7;
  const unsigned long ul = 4000000000UL;
  const struct {
    vexel::SQLValue value;
    const char* want;
  } cases[] = {
      {vexel::SQLValue(), ""},
      {vexel::SQLValue(s), "-5"},
      {vexel::SQLValue(us), "65535"},
      {vexel::SQLValue(INT_MIN), "-2147483648"},
      {vexel::SQLValue(4294967295U), "4294967295"},
      {vexel::SQLValue(l), "-7"},
      {vexel::SQLValue(ul), "4000000000"},
      {vexel::SQLValue(-1LL), "-1"},
      {vexel::SQLValue(18446744073709551615ULL), "18446744073709551615"},
      {vexel::SQLValue(0.1f), "0.100000"},
      {vexel::SQLValue(1.5), "1.500000"},
      {vexel::SQLValue(0.000001), "0.000001"},
      {vexel::SQLValue(100000000.0), "100000000.000000"},
      {vexel::SQLValue(std::string("")), "''"},
      {vexel::SQLValue("it's"), "'it's'"},  // never escaped: callers escape first
      {vexel::SQLValue(vexel::SQLExpr("NULL")), "NULL"},
      {vexel::SQLValue(vexel::SQLFunc{"now()"}), "now()"},
      {vexel::SQLValue(vexel::SQLValue(3), tessel::DB_SQLITE), "3"},
  };
  for (const auto& c : cases) {
    for (int code : kDialects) EXPECT_EQ(c.value.GetExpr(db(code)), c.want) << code;
    EXPECT_EQ(c.value.GetValue(), c.want);
  }
}

TEST(Values, DialectIsKeptButNeverRenders) {
  vexel::SQLValue v(7, tessel::DB_SQLSERVER);
  EXPECT_EQ(v.db_type(), tessel::DB_SQLSERVER);
  EXPECT_EQ(vexel::SQLValue(7).db_type(), tessel::DB_POSTGRESQL);
  v.set_db_type(db(9));
  EXPECT_EQ(v.db_type(), db(9));
  EXPECT_EQ(v.GetExpr(tessel::DB_SQLITE), "7");
}

TEST(Values, VerbatimExpressions) {
  vexel::col c = vexel::sch("s").tab("t").col("c");
  auto node = std::make_shared<vexel::SQLExpr>("x > 1");
  const struct {
    vexel::SQLExpr e;
    const char* want;
  } cases[] = {
      {vexel::SQLExpr(), ""},
      {vexel::SQLExpr("a = 1"), "a = 1"},
      {vexel::SQLExpr(vexel::SQLValue("v")), "'v'"},
      {vexel::SQLExpr(vexel::SQLValue(2), tessel::DB_SQLITE), "2"},
      {vexel::SQLExpr(*node, tessel::DB_SQLITE), "x > 1"},
      {vexel::SQLExpr(std::shared_ptr<vexel::CommonExpr>(node), tessel::DB_SQLITE), "x > 1"},
      {vexel::SQLExpr(std::shared_ptr<vexel::CommonExpr>(), tessel::DB_SQLITE), ""},
      // The column renders in its own dialect: the schema stays.
      {vexel::SQLExpr(c, tessel::DB_SQLITE), "s.t.c"},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) EXPECT_EQ(k.e.GetExpr(db(code)), k.want) << code;
  }
}

TEST(Values, ColumnFromExpression) {
  vexel::col c(vexel::SQLExpr("count(*)"), tessel::DB_SQLITE);
  EXPECT_EQ(c.col_name(), "count(*)");
  EXPECT_EQ(c.db_type(), tessel::DB_SQLITE);
}

}  // namespace
