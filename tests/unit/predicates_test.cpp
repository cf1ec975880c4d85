// Column predicates: the texts fixed when a condition is built, and the
// pattern, regular-expression, full-text and XOR nodes that render with the
// statement's dialect.
#include <gtest/gtest.h>

#include <climits>
#include <functional>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::fake;
using vexel_test::kDialects;
using vexel_test::PerDialect;

// Column "c" of table "t", no schema.
vexel::col tc() { return vexel::tab("t").col("c"); }

struct FixedCase {
  const char* name;
  vexel::Ptr_CommonExpr condition;
  const char* want;
};

TEST(Predicates, FixedTextsAreTheSameInEveryDialect) {
  const vexel::col c = tc();
  const FixedCase cases[] = {
      {"int", c == 1, "t.c = 1"},
      {"negative short", c == static_cast<short>(-5), "t.c = -5"},
      {"unsigned long long", c == ULLONG_MAX, "t.c = 18446744073709551615"},
      {"double with six decimals", c == 1.5, "t.c = 1.500000"},
      {"float", c == 0.1f, "t.c = 0.100000"},
      {"string is quoted", c == std::string("x"), "t.c = 'x'"},
      {"quote inside is not escaped", c == "O'Brien", "t.c = 'O'Brien'"},
      {"column", c == vexel::col("d"), "t.c = d"},
      {"value", c == vexel::SQLValue("v"), "t.c = 'v'"},
      {"eq", c.eq(vexel::SQLValue(2)), "t.c = 2"},
      {"!= column", c != vexel::col("d"), "t.c != d"},
      {"!= value", c != vexel::SQLValue(2), "t.c != 2"},
      {"neq", c.neq(vexel::SQLValue(2)), "t.c != 2"},
      {"< value", c < vexel::SQLValue(2), "t.c < 2"},
      {"lt value", c.lt(vexel::SQLValue(2)), "t.c < 2"},
      {"lt column", c.lt(vexel::col("d")), "t.c < d"},
      {"<= column", c <= vexel::col("d"), "t.c <= d"},
      {"<= value", c <= vexel::SQLValue(2), "t.c <= 2"},
      {"> column", c > vexel::col("d"), "t.c > d"},
      {"> value", c > vexel::SQLValue(2), "t.c > 2"},
      {"gt", c.gt(vexel::SQLValue(2)), "t.c > 2"},
      {">= column", c >= vexel::col("d"), "t.c >= d"},
      {">= value", c >= vexel::SQLValue(2), "t.c >= 2"},
      {"| value", c | vexel::SQLValue(4), "t.c | 4"},
      {"| expression", c | vexel::SQLExpr("x + 1"), "t.c | x + 1"},
      {"in verbatim list", c.in("1, 'a'"), "t.c IN (1, 'a')"},
      {"in ints", c.in({1, 2, 3}), "t.c IN (1,2,3)"},
      {"in strings", c.in({"a", "b"}), "t.c IN ('a','b')"},
      {"in one string", c.in(std::vector<std::string>{"a"}), "t.c IN ('a')"},
      {"in empty", c.in(std::vector<int>{}), "t.c IN ()"},
      {"notin verbatim list", c.notin("1"), "t.c NOT IN (1)"},
      {"notin ints", c.notin(std::vector<int>{1, 2}), "t.c NOT IN (1,2)"},
      {"notin strings", c.notin({"a", "b"}), "t.c NOT IN ('a','b')"},
      {"notin empty", c.notin(std::vector<std::string>{}), "t.c NOT IN ()"},
      {"between", c.BETWEEN(vexel::SQLValue(1), vexel::SQLValue("z")), "t.c BETWEEN 1 AND 'z'"},
      {"is null keeps its trailing blank", c.is_null(), "t.c IS NULL "},
      {"is not null keeps its trailing blank", c.is_not_null(), "t.c IS NOT NULL "},
      {"function column", vexel::sch("s").func("f") == 1, "s..f = 1"},
      {"schema dropped by a SQLite column",
       vexel::col(vexel::sch("s").tab("t").col("c"), tessel::DB_SQLITE) == 1, "t.c = 1"},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) EXPECT_EQ(k.condition.GetExpr(db(code)), k.want) << k.name;
  }
}

TEST(Predicates, ColumnTextIsTakenWhenBuilt) {
  vexel::col c = tc();
  const vexel::Ptr_CommonExpr fixed = c == 1;
  const vexel::Ptr_CommonExpr node = c.ilike("a");
  c.AS("x");
  EXPECT_EQ(fixed.GetExpr(tessel::DB_POSTGRESQL), "t.c = 1");
  EXPECT_EQ(node.GetExpr(tessel::DB_POSTGRESQL), "t.c ILIKE 'a'");
}

// A subquery's text is taken when the condition is built; later clauses on
// the subquery do not reach it.
TEST(Predicates, SubqueriesAreRenderedOnce) {
  for (int code : kDialects) {
    vexel::QueryBuilder sub(fake(code));
    sub.SELECT({vexel::col("x")}).FROM(vexel::tab("u"));
    const vexel::Ptr_CommonExpr in = tc().in(sub);
    const vexel::Ptr_CommonExpr notin = tc().notin(sub);
    const vexel::Ptr_CommonExpr eq = tc() == sub;
    sub.WHERE(vexel::col("x") == 1);
    EXPECT_EQ(in.GetExpr(db(code)), "t.c IN (SELECT x FROM u)") << code;
    EXPECT_EQ(notin.GetExpr(db(code)), "t.c NOT IN (SELECT x FROM u)") << code;
    EXPECT_EQ(eq.GetExpr(db(code)), "t.c = (SELECT x FROM u)") << code;
  }
}

struct NodeCase {
  const char* name;
  vexel::Ptr_CommonExpr condition;
  PerDialect expected;
};

TEST(Predicates, DialectNodes) {
  const vexel::col c = tc();
  const NodeCase cases[] = {
      {"like", c.like("a%"), vexel_test::all("t.c LIKE 'a%'")},
      {"ilike is PostgreSQL only",
       c.ilike("a%"),
       {"t.c LIKE 'a%'", "t.c ILIKE 'a%'", "t.c LIKE 'a%'", "t.c LIKE 'a%'"}},
      {"regexp",
       c.regexp("^a"),
       {"regexp(t.c , '^a',0)", "t.c ~* '^a'", "t.c ~* '^a'", "t.c ~* '^a'"}},
      {"regexp_cap",
       c.regexp_cap("^a"),
       {"regexp(t.c , '^a',1)", "t.c ~ '^a'", "t.c ~ '^a'", "t.c ~ '^a'"}},
      {"not_regexp",
       c.not_regexp("^a"),
       {"regexp(t.c , '^a',2)", "t.c !~* '^a'", "t.c !~* '^a'", "t.c !~* '^a'"}},
      {"not_regexp_cap",
       c.not_regexp_cap("^a"),
       {"regexp(t.c , '^a',3)", "t.c !~ '^a'", "t.c !~ '^a'", "t.c !~ '^a'"}},
      // SQLite degrades SIMILAR TO to LIKE with two blanks.
      {"similar_to",
       c.similar_to(vexel::SQLValue("a%")),
       {"t.c LIKE  'a%'", "t.c SIMILAR TO 'a%'", "t.c SIMILAR TO 'a%'", "t.c SIMILAR TO 'a%'"}},
      {"full text search drops the qualifier",
       vexel::sch("s").tab("t").col("c").full_text_search("w"),
       {"c LIKE '%w%'", "c @@ to_tsquery('w')", "c LIKE '%w%'", "c LIKE '%w%'"}},
      {"xor value",
       c.XOR(vexel::SQLValue(5)),
       {"(t.c & ~(5))|(5 & ~t.c)", "t.c # 5", "t.c#5", "t.c#5"}},
      {"xor expression",
       c.XOR(vexel::SQLExpr("u.d")),
       {"(t.c & ~(u.d))|(u.d & ~t.c)", "t.c # u.d", "t.c#u.d", "t.c#u.d"}},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) {
      EXPECT_EQ(k.condition.GetExpr(db(code)), k.expected.at(code)) << k.name << " @" << code;
    }
  }
}

// The statement's dialect decides, not the column's: a PostgreSQL column in
// a SQLite statement renders the SQLite form.
TEST(Predicates, RenderWithTheStatementDialect) {
  const PerDialect expected = {
      "SELECT c FROM t WHERE (t.c LIKE 'a%' AND regexp(t.d , 'x',0))",
      "SELECT c FROM t WHERE (t.c ILIKE 'a%' AND t.d ~* 'x')",
      "SELECT c FROM t WHERE (t.c LIKE 'a%' AND t.d ~* 'x')",
      "SELECT c FROM t WHERE (t.c LIKE 'a%' AND t.d ~* 'x')",
  };
  const vexel::tab t("t");
  const vexel::Ptr_CommonExpr condition = t.col("c").ilike("a%").AND(t.col("d").regexp("x"));
  for (int code : kDialects) {
    vexel::QueryBuilder q(fake(code));
    q.SELECT({vexel::col("c")}).FROM(t).WHERE(condition);
    EXPECT_EQ(q.tosql(), expected.at(code)) << code;
  }
}

}  // namespace
