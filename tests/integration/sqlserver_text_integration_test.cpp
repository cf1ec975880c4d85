// SQL Server has no engine on this machine: the statements the other tests
// run on SQLite and PostgreSQL are checked here as SQL Server text only.
#include <gtest/gtest.h>

#include <functional>

#include "support/FakeConnect.h"
#include "vexel/vexel.h"

namespace {

using vexel::col;
using vexel::QueryBuilder;
using vexel::SQLExpr;

const vexel::tab items = vexel::sch("s").tab("items");
const vexel::tab orders = vexel::sch("s").tab("orders");

struct Case {
  const char* name;
  std::function<void(QueryBuilder&)> build;
  const char* text;
};

TEST(SqlServerText, StatementsOfTheEngineTests) {
  const Case cases[] = {
      {"paging",
       [](QueryBuilder& q) {
         q.SELECT({items.col("id")}).FROM(items).ORDER_BY({items.col("id")}).LIMIT(2).OFFSET(1);
       },
       "SELECT s.items.id FROM s.items ORDER BY s.items.id OFFSET 1 ROWS FETCH NEXT 2 ROWS ONLY"},
      {"offset alone",
       [](QueryBuilder& q) {
         q.SELECT({items.col("id")}).FROM(items).ORDER_BY({items.col("id")}).OFFSET(3);
       },
       "SELECT s.items.id FROM s.items ORDER BY s.items.id"},
      {"join grouped",
       [](QueryBuilder& q) {
         q.SELECT({items.col("name"), col("sum(orders.qty)").AS("ordered")})
             .FROM(items)
             .JOIN(orders)
             .ON(SQLExpr("orders.item_id = items.id"))
             .GROUP_BY({items.col("name")})
             .HAVING(SQLExpr("sum(orders.qty) > 1"));
       },
       "SELECT s.items.name , sum(orders.qty) AS ordered FROM s.items JOIN s.orders ON "
       "orders.item_id = items.id GROUP BY s.items.name HAVING sum(orders.qty) > 1"},
      // The select expression is not used, and " FROM " stands even alone.
      {"expression", [](QueryBuilder& q) { q.SELECT(SQLExpr("count(*) AS n")); }, "SELECT  FROM "},
      {"union",
       [](QueryBuilder& q) {
         QueryBuilder other(std::make_shared<vexel_test::FakeConnect>(3));
         other.SELECT({items.col("name")}).FROM(items).WHERE(SQLExpr("items.price > 2"));
         q.SELECT({items.col("name")}).FROM(items).UNION_ALL(other);
       },
       "SELECT s.items.name FROM s.items UNION ALL SELECT s.items.name FROM s.items WHERE "
       "items.price > 2"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    auto conn = std::make_shared<vexel_test::FakeConnect>(3);
    QueryBuilder q(conn);
    c.build(q);
    EXPECT_EQ(q.tosql(), c.text);
    // Executed without a trailing ";".
    q.Execute();
    EXPECT_EQ(conn->statements(), std::vector<std::string>{std::string("ExecuteQuery:") + c.text});
  }
}

}  // namespace
