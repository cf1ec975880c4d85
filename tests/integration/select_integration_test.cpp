// Every SELECT form the library builds, run on SQLite and PostgreSQL, with
// the rows read back through the connection's cursor.
#include "Engines.h"
#include "support/CaptureLog.h"

namespace vexel_it {
namespace {

using vexel::col;
using vexel::QueryBuilder;
using vexel::SQLExpr;

class SelectTest : public EngineTest {
 protected:
  QueryBuilder Builder() { return QueryBuilder(conn_); }
};

TEST_P(SelectTest, ColumnsOrdered) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("id"), items_.col("name")})
      .FROM(items_)
      .ORDER_BY({items_.col("price").DESC()});
  EXPECT_EQ(
      Run(q, {"id", "name"}),
      (Rows{{"5", "eclair"}, {"4", "donut"}, {"1", "apple"}, {"2", "banana"}, {"3", "carrot"}}));
  EXPECT_EQ(conn_->last_op(), "ExecuteQuery");
}

TEST_P(SelectTest, WhereAndOr) {
  // AND / OR extend WHERE without brackets: SQL's precedence applies.
  QueryBuilder q = Builder();
  q.SELECT({items_.col("name")})
      .FROM(items_)
      .WHERE(SQLExpr("items.price >= 2"))
      .AND(SQLExpr("items.category = 'fruit'"))
      .OR(vexel::Ptr_CommonExpr(std::make_shared<SQLExpr>("items.id = 3")))
      .ORDER_BY({items_.col("id")});
  EXPECT_EQ(Run(q, {"name"}), (Rows{{"apple"}, {"banana"}, {"carrot"}}));
}

TEST_P(SelectTest, JoinOn) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("name"), orders_.col("qty")})
      .FROM(orders_)
      .JOIN(items_)
      .ON(SQLExpr("items.id = orders.item_id"))
      .ORDER_BY({orders_.col("id")});
  EXPECT_EQ(Run(q, {"name", "qty"}),
            (Rows{{"apple", "10"}, {"apple", "5"}, {"carrot", "7"}, {"donut", "1"}}));
}

TEST_P(SelectTest, LeftJoinReadsNullAsEmpty) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("name"), orders_.col("qty")})
      .FROM(items_)
      .LEFT_JOIN(orders_)
      .ON(SQLExpr("items.id = orders.item_id"))
      .AND(SQLExpr("orders.qty > 4"))
      .ORDER_BY({items_.col("id"), orders_.col("qty")});
  EXPECT_EQ(Run(q, {"name", "qty"}), (Rows{{"apple", "5"},
                                           {"apple", "10"},
                                           {"banana", ""},
                                           {"carrot", "7"},
                                           {"donut", ""},
                                           {"eclair", ""}}));
  // A NULL also reads as 0 through the integer accessors.
  ASSERT_TRUE(conn_->ExecuteQuery("SELECT NULL AS n"));
  EXPECT_EQ(conn_->GetFieldInt("n"), 0);
  EXPECT_EQ(conn_->GetFieldInt(0), 0);
}

TEST_P(SelectTest, RightJoin) {
  QueryBuilder q = Builder();
  q.SELECT({orders_.col("id"), items_.col("name")})
      .FROM(items_)
      .RIGHT_JOIN(orders_)
      .ON(SQLExpr("items.id = orders.item_id"))
      .WHERE(SQLExpr("orders.qty < 3"))
      .ORDER_BY({orders_.col("id")});
  EXPECT_EQ(Run(q, {"id", "name"}), (Rows{{"4", "donut"}, {"5", ""}}));
}

TEST_P(SelectTest, GroupByHaving) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("category"), col("count(*)").AS("n"), col("sum(items.price)").AS("total")})
      .FROM(items_)
      .GROUP_BY({items_.col("category")})
      .HAVING(SQLExpr("count(*) > 1"))
      .ORDER_BY({items_.col("category")});
  EXPECT_EQ(Run(q, {"category", "n", "total"}), (Rows{{"bakery", "2", "11"}, {"fruit", "2", "5"}}));
  // Integers read by name and by position.
  ASSERT_TRUE(q.Execute());
  EXPECT_EQ(conn_->GetFieldInt("total"), 11);
  EXPECT_EQ(conn_->GetFieldInt(1), 2);
}

TEST_P(SelectTest, JoinGroupedAggregate) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("name"), col("sum(orders.qty)").AS("ordered")})
      .FROM(items_)
      .JOIN(orders_)
      .ON(SQLExpr("orders.item_id = items.id"))
      .GROUP_BY({items_.col("name")})
      .ORDER_BY({col("ordered").DESC()});
  EXPECT_EQ(Run(q, {"name", "ordered"}), (Rows{{"apple", "15"}, {"carrot", "7"}, {"donut", "1"}}));
}

TEST_P(SelectTest, LimitOffset) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("id")}).FROM(items_).ORDER_BY({items_.col("id")}).LIMIT(2).OFFSET(1);
  EXPECT_EQ(Run(q, {"id"}), (Rows{{"2"}, {"3"}}));

  QueryBuilder first = Builder();
  first.SELECT({items_.col("id")}).FROM(items_).ORDER_BY({items_.col("id")}).LIMIT(1);
  EXPECT_EQ(Run(first, {"id"}), (Rows{{"1"}}));
}

TEST_P(SelectTest, OffsetWithoutLimit) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("id")}).FROM(items_).ORDER_BY({items_.col("id")}).OFFSET(3);
  if (is_sqlite()) {
    // SQLite has no OFFSET without LIMIT; the text stays as hosts expect it.
    EXPECT_EQ(q.tosql(), "SELECT items.id FROM " + schema_ + ".items ORDER BY items.id OFFSET 3");
    vexel_test::CaptureLog log;
    EXPECT_FALSE(q.Execute());
  } else {
    EXPECT_EQ(Run(q, {"id"}), (Rows{{"4"}, {"5"}}));
  }
}

TEST_P(SelectTest, SetOperations) {
  auto part = [&](const char* condition) {
    QueryBuilder q = Builder();
    q.SELECT({items_.col("name")}).FROM(items_).WHERE(SQLExpr(condition));
    return q;
  };
  struct Case {
    const char* name;
    QueryBuilder& (QueryBuilder::*op)(const QueryBuilder&);
    Rows rows;
  };
  const Case cases[] = {
      {"UNION", &QueryBuilder::UNION, {{"apple"}, {"banana"}, {"carrot"}}},
      {"UNION ALL", &QueryBuilder::UNION_ALL, {{"apple"}, {"apple"}, {"banana"}, {"carrot"}}},
      {"EXCEPT", &QueryBuilder::EXCEPT, {{"banana"}}},
      {"INTERSECT", &QueryBuilder::INTERSECT, {{"apple"}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QueryBuilder q = part("items.category = 'fruit'");
    (q.*c.op)(part("items.price IN (1, 3)"));
    EXPECT_NE(q.tosql().find(std::string(" ") + c.name + " SELECT"), std::string::npos);
    ASSERT_TRUE(q.Execute()) << q.tosql() << "\n" << LastError();
    EXPECT_EQ(Sorted(ReadRows(*conn_, {"name"})), c.rows);
  }
}

TEST_P(SelectTest, SubqueryInFromAndJoin) {
  QueryBuilder cheap = Builder();
  cheap.SELECT({items_.col("id"), items_.col("name")})
      .FROM(items_)
      .WHERE(SQLExpr("items.price < 3"));
  vexel::tab c("cheap");
  QueryBuilder q = Builder();
  q.SELECT({c.col("name")}).FROM(cheap, "cheap").ORDER_BY({c.col("name")});
  EXPECT_EQ(Run(q, {"name"}), (Rows{{"banana"}, {"carrot"}}));

  QueryBuilder totals = Builder();
  totals.SELECT({orders_.col("item_id"), col("sum(orders.qty)").AS("total")})
      .FROM(orders_)
      .GROUP_BY({orders_.col("item_id")});
  vexel::tab t("t");
  QueryBuilder joined = Builder();
  joined.SELECT({items_.col("name"), t.col("total")})
      .FROM(items_)
      .JOIN(totals, "t")
      .ON(SQLExpr("t.item_id = items.id"))
      .ORDER_BY({items_.col("name")});
  EXPECT_EQ(Run(joined, {"name", "total"}),
            (Rows{{"apple", "15"}, {"carrot", "7"}, {"donut", "1"}}));
}

TEST_P(SelectTest, SelectExpression) {
  QueryBuilder q = Builder();
  q.SELECT(SQLExpr("count(*) AS n")).FROM(items_).WHERE(SQLExpr("items.price > 2"));
  EXPECT_EQ(Run(q, {"n"}), (Rows{{"3"}}));
}

TEST_P(SelectTest, ExecutionVariantsReturnRows) {
  if (pg_) pg_->SetLoopBatchSize(2);  // the five rows come in three batches
  QueryBuilder q = Builder();
  q.SELECT({items_.col("name")}).FROM(items_).ORDER_BY({items_.col("id")});
  const Rows all{{"apple"}, {"banana"}, {"carrot"}, {"donut"}, {"eclair"}};
  // SQLite runs every variant through ExecuteQuery; PostgreSQL has its own.
  ASSERT_TRUE(q.ExecuteQueryUDT(5)) << LastError();
  EXPECT_EQ(conn_->last_op(), is_sqlite() ? "ExecuteQuery" : "ExecuteQueryUDT");
  EXPECT_EQ(ReadRows(*conn_, {"name"}), all);

  ASSERT_TRUE(q.ExecuteLoop()) << LastError();
  EXPECT_EQ(conn_->last_op(), is_sqlite() ? "ExecuteQuery" : "ExecuteLoop");
  EXPECT_EQ(ReadRows(*conn_, {"name"}), all);

  ASSERT_TRUE(q.ExecuteSortByCollate("C")) << LastError();
  EXPECT_EQ(conn_->last_op(), is_sqlite() ? "ExecuteQuery" : "ExecuteSortByCollate");
  EXPECT_EQ(ReadRows(*conn_, {"name"}), all);
}

TEST_P(SelectTest, PublicViewGoesToViewAwareQuery) {
  QueryBuilder q = Builder();
  q.SELECT({cheap_view_.col("name"), cheap_view_.col("price")})
      .FROM(cheap_view_)
      .ORDER_BY({cheap_view_.col("price")});
  EXPECT_EQ(Run(q, {"name", "price"}), (Rows{{"apple", "3"}, {"donut", "5"}, {"eclair", "6"}}));
  EXPECT_EQ(conn_->last_op(), "ExecuteQueryContainView");
  // SQLite renders the view without its schema.
  EXPECT_EQ(q.tosql().find("FROM public."),
            is_sqlite() ? std::string::npos : q.tosql().find("FROM "));

  // The mark travels with a subquery over the view.
  vexel::tab sub("v");
  QueryBuilder outer = Builder();
  outer.SELECT({sub.col("name")}).FROM(q, "v");
  EXPECT_EQ(Run(outer, {"name"}).size(), 3u);
  EXPECT_EQ(conn_->last_op(), "ExecuteQueryContainView");
}

TEST_P(SelectTest, DistinctColumn) {
  // DISTINCT goes inside the qualifier, so only an unqualified column gives
  // runnable SQL; the qualified text is kept as hosts expect it.
  QueryBuilder q = Builder();
  q.SELECT({col("category").DISTINCT()}).FROM(items_).ORDER_BY({col("category")});
  EXPECT_EQ(Run(q, {"category"}), (Rows{{"bakery"}, {"fruit"}, {"vegetable"}}));

  QueryBuilder qualified = Builder();
  qualified.SELECT({items_.col("category").DISTINCT()}).FROM(items_);
  const std::string table = (is_sqlite() ? "" : schema_ + ".") + "items";
  EXPECT_EQ(qualified.tosql(),
            "SELECT " + table + ". DISTINCT category FROM " + schema_ + ".items");
  vexel_test::CaptureLog log;
  EXPECT_FALSE(qualified.Execute());
}

TEST_P(SelectTest, OrderAndLimitBeforeSetOperationIsTextOnly) {
  // Set operations follow the first statement's ORDER BY and LIMIT; neither
  // engine accepts that order, so such a statement is text only.
  QueryBuilder other = Builder();
  other.SELECT({items_.col("name")}).FROM(items_);
  QueryBuilder q = Builder();
  q.SELECT({items_.col("name")}).FROM(items_).ORDER_BY({items_.col("name")}).LIMIT(2).UNION(other);
  const std::string c = (is_sqlite() ? "" : schema_ + ".") + "items.name";
  const std::string from = " FROM " + schema_ + ".items";
  EXPECT_EQ(q.tosql(),
            "SELECT " + c + from + " ORDER BY " + c + " LIMIT 2 UNION SELECT " + c + from);
  vexel_test::CaptureLog log;
  EXPECT_FALSE(q.Execute());
  EXPECT_EQ(log.lines().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Engines, SelectTest, testing::Values(Engine::kSqlite, Engine::kPostgres),
                         EngineName);

}  // namespace
}  // namespace vexel_it
