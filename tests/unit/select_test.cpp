// SELECT clauses: the text each dialect assembles, the replace-or-accumulate
// rule of each clause, and the fixed clause order.
#include <gtest/gtest.h>

#include <functional>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::fake;
using vexel_test::PerDialect;

vexel::Ptr_CommonExpr cond(const std::string& text) {
  return vexel::Ptr_CommonExpr(std::make_shared<vexel::SQLExpr>(text));
}

struct SelectCase {
  const char* name;
  std::function<void(vexel::QueryBuilder&)> build;
  PerDialect expected;
};

const vexel::tab kT = vexel::sch("s").tab("t");
const vexel::tab kU = vexel::sch("s").tab("u");

std::string render(int code, const std::function<void(vexel::QueryBuilder&)>& build) {
  vexel::QueryBuilder q(fake(code));
  build(q);
  return q.tosql();
}

// A subquery built in the dialect of the outer builder.
vexel::QueryBuilder sub(vexel::QueryBuilder& outer, const char* text) {
  vexel::QueryBuilder s(fake(static_cast<int>(outer.db_type())));
  s.SELECT({vexel::col(text)}).FROM(vexel::tab("x"));
  return s;
}

const SelectCase kCases[] = {
    {"full chain",
     [](vexel::QueryBuilder& q) {
       q.SELECT({kT.col("c1"), kT.col("c2")})
           .FROM(kT)
           .WHERE(cond("e"))
           .ORDER_BY({kT.col("c1").DESC()})
           .LIMIT(10)
           .OFFSET(20);
     },
     {"SELECT t.c1 , t.c2 FROM s.t WHERE e ORDER BY t.c1 DESC  LIMIT 10 OFFSET 20",
      "SELECT s.t.c1 , s.t.c2 FROM s.t WHERE e ORDER BY s.t.c1 DESC  LIMIT 10 OFFSET 20",
      "SELECT s.t.c1 , s.t.c2 FROM s.t WHERE e ORDER BY s.t.c1 DESC  OFFSET 20 ROWS FETCH NEXT 10 "
      "ROWS ONLY",
      "SELECT s.t.c1 , s.t.c2 FROM s.t WHERE e ORDER BY s.t.c1 DESC  LIMIT 10 OFFSET 20"}},
    {"limit only",
     [](vexel::QueryBuilder& q) { q.FROM(vexel::tab("t")).LIMIT(10); },
     {"SELECT  FROM t LIMIT 10", "SELECT  FROM t LIMIT 10",
      "SELECT  FROM t OFFSET 0 ROWS FETCH NEXT 10 ROWS ONLY", "SELECT  FROM t LIMIT 10"}},
    {"offset only",
     [](vexel::QueryBuilder& q) { q.FROM(vexel::tab("t")).OFFSET(20); },
     {"SELECT  FROM t OFFSET 20", "SELECT  FROM t OFFSET 20", "SELECT  FROM t",
      "SELECT  FROM t OFFSET 20"}},
    {"zero paging renders nothing",
     [](vexel::QueryBuilder& q) { q.FROM(vexel::tab("t")).LIMIT(5).OFFSET(5).LIMIT(0).OFFSET(0); },
     vexel_test::all("SELECT  FROM t")},
    {"joins pair with their ON",
     [](vexel::QueryBuilder& q) {
       q.SELECT({vexel::col("a")})
           .FROM(vexel::tab("t"))
           .JOIN(vexel::tab("u"))
           .ON(cond("t.id = u.id"))
           .LEFT_JOIN(vexel::sch("s").view("v"))
           .ON(cond("v.id = t.id"))
           .RIGHT_JOIN(vexel::tab("w"))
           .ON(cond("w.id = t.id"));
     },
     {"SELECT a FROM t JOIN u ON t.id = u.id LEFT JOIN v ON v.id = t.id RIGHT JOIN w ON w.id = "
      "t.id",
      "SELECT a FROM t JOIN u ON t.id = u.id LEFT JOIN s.v ON v.id = t.id RIGHT JOIN w ON w.id = "
      "t.id",
      "SELECT a FROM t JOIN u ON t.id = u.id LEFT JOIN s.v ON v.id = t.id RIGHT JOIN w ON w.id = "
      "t.id",
      "SELECT a FROM t JOIN u ON t.id = u.id LEFT JOIN s.v ON v.id = t.id RIGHT JOIN w ON w.id = "
      "t.id"}},
    {"a join without ON renders bare",
     [](vexel::QueryBuilder& q) { q.FROM(vexel::tab("t")).JOIN(vexel::tab("u")); },
     vexel_test::all("SELECT  FROM t JOIN u")},
    {"AND and OR extend WHERE without brackets",
     [](vexel::QueryBuilder& q) {
       q.FROM(vexel::tab("t")).WHERE(cond("a")).AND(cond("b")).OR(cond("c"));
     },
     vexel_test::all("SELECT  FROM t WHERE a AND b OR c")},
    {"AND goes to HAVING before WHERE",
     [](vexel::QueryBuilder& q) {
       q.FROM(vexel::tab("t"))
           .WHERE(cond("w"))
           .GROUP_BY({vexel::col("g"), vexel::col("h")})
           .HAVING(cond("h"))
           .AND(cond("x"));
     },
     vexel_test::all("SELECT  FROM t WHERE w GROUP BY g , h HAVING h AND x")},
    {"AND goes to the last ON without WHERE",
     [](vexel::QueryBuilder& q) {
       q.FROM(vexel::tab("t"))
           .JOIN(vexel::tab("u"))
           .ON(cond("o1"))
           .JOIN(vexel::tab("v"))
           .ON(cond("o2"))
           .OR(cond("o3"));
     },
     vexel_test::all("SELECT  FROM t JOIN u ON o1 JOIN v ON o2 OR o3")},
    {"AND with nothing to extend changes nothing",
     [](vexel::QueryBuilder& q) { q.FROM(vexel::tab("t")).AND(cond("x")).OR(cond("y")); },
     vexel_test::all("SELECT  FROM t")},
    {"clauses replace",
     [](vexel::QueryBuilder& q) {
       q.SELECT({vexel::col("old")})
           .SELECT({vexel::col("a")})
           .FROM(vexel::tab("old"))
           .FROM(vexel::tab("t"))
           .WHERE(cond("old"))
           .WHERE(cond("w"))
           .GROUP_BY({vexel::col("old")})
           .GROUP_BY({vexel::col("g")})
           .HAVING(cond("old"))
           .HAVING(cond("h"))
           .ORDER_BY({vexel::col("old")})
           .ORDER_BY({vexel::col("o").ASC()});
     },
     {"SELECT a FROM t WHERE w GROUP BY g HAVING h ORDER BY o ASC ",
      "SELECT a FROM t WHERE w GROUP BY g HAVING h ORDER BY o ASC ",
      "SELECT a FROM t WHERE w GROUP BY g HAVING h ORDER BY o ASC ",
      "SELECT a FROM t WHERE w GROUP BY g HAVING h ORDER BY o ASC "}},
    {"without FROM the other clauses are kept but not rendered",
     [](vexel::QueryBuilder& q) {
       q.SELECT({vexel::col("a")}).WHERE(cond("w")).ORDER_BY({vexel::col("a")}).LIMIT(1).OFFSET(2);
     },
     {"SELECT a", "SELECT a",
      "SELECT a FROM  WHERE w ORDER BY a OFFSET 2 ROWS FETCH NEXT 1 ROWS ONLY", "SELECT a"}},
    {"select expression stands before the columns",
     [](vexel::QueryBuilder& q) {
       q.SELECT(vexel::SQLExpr("count(*)")).SELECT({vexel::col("c")}).FROM(vexel::tab("t"));
     },
     {"SELECT count(*)c FROM t", "SELECT count(*)c FROM t", "SELECT c FROM t",
      "SELECT count(*)c FROM t"}},
    {"select value",
     [](vexel::QueryBuilder& q) { q.SELECT(vexel::SQLValue("x")).SELECT(vexel::SQLValue(1)); },
     {"SELECT 1", "SELECT 1", "SELECT  FROM ", "SELECT 1"}},
    {"empty select list",
     [](vexel::QueryBuilder& q) { q.SELECT(std::vector<vexel::col>{}).FROM(vexel::tab("t")); },
     vexel_test::all("SELECT  FROM t")},
    {"empty first column adds no separator",
     [](vexel::QueryBuilder& q) {
       q.SELECT({vexel::func("now"), vexel::col("a"), vexel::col(""), vexel::col("b")})
           .FROM(vexel::tab("t"));
     },
     vexel_test::all("SELECT a ,  , b FROM t")},
    {"set operations in fixed order, last operand wins",
     [](vexel::QueryBuilder& q) {
       q.SELECT({vexel::col("a")}).FROM(vexel::tab("t")).ORDER_BY({vexel::col("a")}).LIMIT(1);
       q.INTERSECT(sub(q, "i"))
           .EXCEPT(sub(q, "e"))
           .UNION(sub(q, "old"))
           .UNION(sub(q, "u"))
           .UNION_ALL(sub(q, "ua"));
     },
     {"SELECT a FROM t ORDER BY a LIMIT 1 UNION ALL SELECT ua FROM x UNION SELECT u FROM x EXCEPT "
      "SELECT e FROM x INTERSECT SELECT i FROM x",
      "SELECT a FROM t ORDER BY a LIMIT 1 UNION ALL SELECT ua FROM x UNION SELECT u FROM x EXCEPT "
      "SELECT e FROM x INTERSECT SELECT i FROM x",
      "SELECT a FROM t ORDER BY a OFFSET 0 ROWS FETCH NEXT 1 ROWS ONLY UNION ALL SELECT ua FROM x "
      "UNION SELECT u FROM x EXCEPT SELECT e FROM x INTERSECT SELECT i FROM x",
      "SELECT a FROM t ORDER BY a LIMIT 1 UNION ALL SELECT ua FROM x UNION SELECT u FROM x EXCEPT "
      "SELECT e FROM x INTERSECT SELECT i FROM x"}},
    {"subqueries in FROM and JOIN",
     [](vexel::QueryBuilder& q) {
       q.SELECT({vexel::col("a")})
           .FROM(sub(q, "f"), "sf")
           .LEFT_JOIN(sub(q, "j"), "sj")
           .ON(cond("sf.a = sj.j"))
           .RIGHT_JOIN(sub(q, "r"), "");
     },
     {"SELECT a FROM (SELECT f FROM x) AS sf LEFT JOIN (SELECT j FROM x) AS sj ON sf.a = sj.j "
      "RIGHT "
      "JOIN (SELECT r FROM x)",
      "SELECT a FROM (SELECT f FROM x) AS sf LEFT JOIN (SELECT j FROM x) AS sj ON sf.a = sj.j "
      "RIGHT "
      "JOIN (SELECT r FROM x)",
      "SELECT a FROM (SELECT f FROM x) AS sf LEFT JOIN (SELECT j FROM x) AS sj ON sf.a = sj.j "
      "RIGHT "
      "JOIN (SELECT r FROM x)",
      "SELECT a FROM (SELECT f FROM x) AS sf LEFT JOIN (SELECT j FROM x) AS sj ON sf.a = sj.j "
      "RIGHT "
      "JOIN (SELECT r FROM x)"}},
    {"columns take the builder's dialect",
     [](vexel::QueryBuilder& q) {
       q.SELECT({kT.col("a")}).GROUP_BY({kT.col("a")}).ORDER_BY({kT.col("a").AS("x")}).FROM(kU);
     },
     {"SELECT t.a FROM s.u GROUP BY t.a ORDER BY t.a AS x",
      "SELECT s.t.a FROM s.u GROUP BY s.t.a ORDER BY s.t.a AS x",
      "SELECT s.t.a FROM s.u GROUP BY s.t.a ORDER BY s.t.a AS x",
      "SELECT s.t.a FROM s.u GROUP BY s.t.a ORDER BY s.t.a AS x"}},
    {"views render in the builder's dialect",
     [](vexel::QueryBuilder& q) {
       q.FROM(vexel::sch("s").view("v")).JOIN(vexel::sch("s").view("w"));
     },
     {"SELECT  FROM v JOIN w", "SELECT  FROM s.v JOIN s.w", "SELECT  FROM s.v JOIN s.w",
      "SELECT  FROM s.v JOIN s.w"}},
};

TEST(Select, ClauseTextsPerDialect) {
  for (const SelectCase& c : kCases) {
    for (int code : vexel_test::kDialects) {
      EXPECT_EQ(render(code, c.build), c.expected.at(code)) << c.name << " in dialect " << code;
    }
  }
}

TEST(Select, ClausesAreRenderedWhenGiven) {
  vexel::QueryBuilder inner(fake(2));
  inner.SELECT({vexel::col("a")}).FROM(vexel::tab("x"));
  vexel::tab t("t");
  vexel::QueryBuilder q(fake(2));
  q.FROM(t).UNION(inner);
  t.AS("changed");
  inner.WHERE(cond("later"));
  EXPECT_EQ(q.tosql(), "SELECT  FROM t UNION SELECT a FROM x");
}

TEST(Select, SetOperandKeepsItsOwnDialect) {
  vexel::QueryBuilder lite(fake(1));
  lite.SELECT({vexel::sch("s").tab("t").col("a")}).FROM(vexel::sch("s").tab("t"));
  vexel::QueryBuilder pg(fake(2));
  pg.SELECT({vexel::sch("s").tab("t").col("a")}).FROM(vexel::sch("s").tab("t")).EXCEPT(lite);
  EXPECT_EQ(pg.tosql(), "SELECT s.t.a FROM s.t EXCEPT SELECT t.a FROM s.t");
}

TEST(Select, SelfReferenceIsSafe) {
  vexel::QueryBuilder q(fake(2));
  q.SELECT({vexel::col("a")}).FROM(vexel::tab("t"));
  q.UNION(q).FROM(q, "x");
  EXPECT_EQ(q.tosql(),
            "SELECT a FROM (SELECT a FROM t UNION SELECT a FROM t) AS x UNION SELECT a FROM t");
}

}  // namespace
