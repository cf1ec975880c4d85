// CASE, group concatenation, aggregates with windows and EXISTS: the texts
// hosts depend on, blanks included.
#include <gtest/gtest.h>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::fake;
using vexel_test::kDialects;
using vexel_test::PerDialect;

vexel::Ptr_CommonExpr cond(const char* text) {
  return vexel::Ptr_CommonExpr(std::make_shared<vexel::SQLExpr>(text));
}

TEST(Case, BranchRules) {
  const vexel::SQLValue one(1), two(2), other("z");
  const struct {
    const char* name;
    vexel::CASE expr;
    const char* want;
  } cases[] = {
      // Without an operand "CASE " meets " WHEN ": two blanks, kept.
      {"condition branch", vexel::CASE().WHEN(cond("a = 1")).THEN(one).END(),
       "CASE  WHEN a = 1 THEN 1 END"},
      {"operand",
       vexel::CASE(vexel::SQLExpr("x")).WHEN(vexel::SQLExpr("x=1")).THEN(one).ELSE(other),
       "CASE x WHEN x=1 THEN 1 ELSE 'z' END"},
      {"empty", vexel::CASE(), "CASE  END"},
      {"only else", vexel::CASE().ELSE(other), "CASE  ELSE 'z' END"},
      {"a second else replaces the first", vexel::CASE().ELSE(one).ELSE(two), "CASE  ELSE 2 END"},
      {"value WHEN becomes the operand and THEN is dropped",
       vexel::CASE().WHEN(vexel::SQLValue(5)).THEN(one), "CASE 5 END"},
      {"value WHEN replaces the operand",
       vexel::CASE(vexel::SQLExpr("x")).WHEN(vexel::SQLValue(5)).THEN(one), "CASE 5 END"},
      {"column WHEN becomes the operand",
       vexel::CASE().WHEN(cond("c")).WHEN(vexel::tab("t").col("k")).THEN(one),
       "CASE t.k WHEN c THEN 1 END"},
      {"THEN after THEN repeats the condition", vexel::CASE().WHEN(cond("a")).THEN(one).THEN(two),
       "CASE  WHEN a THEN 1 WHEN a THEN 2 END"},
      {"node pointer forms",
       vexel::CASE()
           .WHEN(std::shared_ptr<vexel::CommonExpr>(std::make_shared<vexel::SQLExpr>("p")))
           .THEN(std::shared_ptr<vexel::CommonExpr>(std::make_shared<vexel::SQLValue>(3)))
           .ELSE(cond("q")),
       "CASE  WHEN p THEN 3 ELSE q END"},
      {"column results", vexel::CASE().WHEN(cond("a")).THEN(vexel::col("r")).ELSE(vexel::col("s")),
       "CASE  WHEN a THEN r ELSE s END"},
      {"combined condition keeps its brackets",
       vexel::CASE().WHEN(cond("a").AND(cond("b"))).THEN(one), "CASE  WHEN (a AND b) THEN 1 END"},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) EXPECT_EQ(k.expr.GetExpr(db(code)), k.want) << k.name;
  }
}

// The dialect reaches the parts when the statement is rendered.
TEST(Case, PartsRenderWithTheStatementDialect) {
  const vexel::col c = vexel::tab("t").col("c");
  vexel::CASE expr;
  expr.WHEN(c.ilike("a%"))
      .THEN(std::make_shared<vexel::TimeExpr>(vexel::NOW(1)))
      .ELSE(vexel::SQLExpr("NULL"));
  const PerDialect expected = {
      "SELECT id FROM t WHERE CASE  WHEN t.c LIKE 'a%' THEN DATETIME('now','localtime') ELSE "
      "NULL END",
      "SELECT id FROM t WHERE CASE  WHEN t.c ILIKE 'a%' THEN now() ELSE NULL END",
      "SELECT id FROM t WHERE CASE  WHEN t.c LIKE 'a%' THEN  ELSE NULL END",
      "SELECT id FROM t WHERE CASE  WHEN t.c LIKE 'a%' THEN  ELSE NULL END",
  };
  for (int code : kDialects) {
    vexel::QueryBuilder q(fake(code));
    q.SELECT({vexel::col("id")}).FROM(vexel::tab("t")).WHERE(expr);
    EXPECT_EQ(q.tosql(), expected.at(code)) << code;
  }
}

TEST(GroupConcat, PerDialect) {
  const vexel::col c = vexel::tab("t").col("c");
  const struct {
    const char* name;
    vexel::GroupConcatExpr expr;
    PerDialect expected;
  } cases[] = {
      {"default separator",
       vexel::GroupConcatExpr(c),
       {"group_concat(t.c,',')", "array_to_string(array_agg(t.c),',')",
        "array_to_string(array_agg(t.c),',')", "array_to_string(array_agg(t.c),',')"}},
      {"separator and alias",
       vexel::GroupConcatExpr(c, ';').AS("x"),
       {"group_concat(t.c,';') AS x", "array_to_string(array_agg(t.c),';') AS x",
        "array_to_string(array_agg(t.c),';') AS x", "array_to_string(array_agg(t.c),';') AS x"}},
      {"a later alias replaces",
       vexel::GroupConcatExpr(c).AS("x").AS(std::string("y")),
       {"group_concat(t.c,',') AS y", "array_to_string(array_agg(t.c),',') AS y",
        "array_to_string(array_agg(t.c),',') AS y", "array_to_string(array_agg(t.c),',') AS y"}},
      {"empty alias writes none",
       vexel::GroupConcatExpr(c).AS("x").AS(""),
       {"group_concat(t.c,',')", "array_to_string(array_agg(t.c),',')",
        "array_to_string(array_agg(t.c),',')", "array_to_string(array_agg(t.c),',')"}},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) {
      EXPECT_EQ(k.expr.GetExpr(db(code)), k.expected.at(code)) << k.name << " @" << code;
    }
  }
}

vexel::window_option window(bool partition, bool order) {
  vexel::window_option w;
  w.partition_by = {vexel::col("a"), vexel::col("b")};
  vexel::col d("d");
  w.order_by = {d.DESC(), vexel::col("e")};
  w.flags.set(vexel::window_option::kPartitionBy, partition);
  w.flags.set(vexel::window_option::kOrderBy, order);
  return w;
}

TEST(Aggregates, Texts) {
  const vexel::col c = vexel::tab("t").col("c");
  vexel::window_option only_third_bit;
  only_third_bit.partition_by = {vexel::col("a")};
  only_third_bit.flags.set(2);
  vexel::window_option empty_lists;
  empty_lists.flags.set();
  const struct {
    const char* name;
    vexel::aggr_func f;
    const char* want;
  } cases[] = {
      {"avg", vexel::AVG(c), "AVG(t.c)"},
      {"count", vexel::COUNT(c), "COUNT(t.c)"},
      {"max", vexel::MAX(c), "MAX(t.c)"},
      {"min", vexel::MIN(c), "MIN(t.c)"},
      {"sum", vexel::SUM(c), "SUM(t.c)"},
      {"rank", vexel::RANK(), "RANK()"},
      {"row_number", vexel::ROW_NUMBER(), "ROW_NUMBER()"},
      {"any text", vexel::aggr_func("count(*)"), "count(*)"},
      // A blank before the first list item, so two after the keyword.
      {"both lists", vexel::COUNT(c).Over(window(true, true)),
       "COUNT(t.c) OVER (PARTITION BY  a,b ORDER BY  d DESC ,e)"},
      {"order only", vexel::RANK().Over(window(false, true)), "RANK() OVER ( ORDER BY  d DESC ,e)"},
      {"partition only", vexel::RANK().Over(window(true, false)),
       "RANK() OVER (PARTITION BY  a,b)"},
      {"no flags", vexel::RANK().Over(window(false, false)), "RANK() OVER ()"},
      {"third bit is not read", vexel::RANK().Over(only_third_bit), "RANK() OVER ()"},
      {"empty lists keep their keywords", vexel::RANK().Over(empty_lists),
       "RANK() OVER (PARTITION BY  ORDER BY )"},
      {"each Over appends", vexel::RANK().Over(window(false, false)).Over(window(false, false)),
       "RANK() OVER () OVER ()"},
  };
  for (const auto& k : cases) {
    for (int code : kDialects) {
      vexel::aggr_func copy = k.f;
      copy.set_db_type(db(code));
      EXPECT_EQ(copy.col_name(), k.want) << k.name << " @" << code;
    }
  }
}

TEST(Aggregates, StandWhereColumnsStand) {
  const vexel::tab t("t");
  for (int code : kDialects) {
    vexel::QueryBuilder q(fake(code));
    q.SELECT({t.col("g"), vexel::COUNT(t.col("c"))}).FROM(t).GROUP_BY({t.col("g")});
    EXPECT_EQ(q.tosql(), "SELECT t.g , COUNT(t.c) FROM t GROUP BY t.g") << code;
  }
}

TEST(Exists, LeadingBlankIsKept) {
  EXPECT_EQ(vexel::EXISTS(vexel::SQLExpr("SELECT 1")).ToExpr(), " EXISTS (SELECT 1)");
  EXPECT_EQ(vexel::NOT_EXISTS(vexel::SQLExpr("SELECT 1")).ToExpr(), " NOT EXISTS (SELECT 1)");
  EXPECT_EQ(vexel::EXISTS(vexel::SQLExpr()).ToExpr(), " EXISTS ()");
}

}  // namespace
