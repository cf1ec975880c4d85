// Queries as an application writes them: several clauses together, run on
// SQLite and PostgreSQL with the rows checked.
#include "Engines.h"

namespace vexel_it {
namespace {

using vexel::col;
using vexel::QueryBuilder;
using vexel::SQLValue;

class RealisticTest : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    Exec("CREATE TABLE " + schema_ + ".shelves (category TEXT, shelf TEXT)");
    Exec("INSERT INTO " + schema_ +
         ".shelves VALUES ('fruit', 'front'), ('vegetable', 'front'), ('bakery', 'back')");
    shelves_ = vexel::sch(schema_).tab("shelves");
  }

  vexel::tab shelves_;
};

TEST_P(RealisticTest, ThreeTableJoinWithGroupedAggregateAndHaving) {
  QueryBuilder q(conn_);
  q.SELECT({shelves_.col("shelf"), vexel::SUM(orders_.col("qty")).AS("units"),
            vexel::COUNT(orders_.col("id")).AS("lines")})
      .FROM(orders_)
      .JOIN(items_)
      .ON(items_.col("id") == orders_.col("item_id"))
      .JOIN(shelves_)
      .ON(shelves_.col("category") == items_.col("category"))
      .WHERE(orders_.col("qty") > SQLValue(0))
      .GROUP_BY({shelves_.col("shelf")})
      .HAVING(vexel::SUM(orders_.col("qty")) > SQLValue(1))
      .ORDER_BY({col("units").DESC()});
  EXPECT_EQ(Run(q, {"shelf", "units", "lines"}), (Rows{{"front", "22", "3"}}));
}

TEST_P(RealisticTest, RankWithinCategoryThenPaged) {
  vexel::window_option by_category;
  by_category.partition_by = {items_.col("category")};
  by_category.order_by = {items_.col("price").DESC()};
  by_category.flags.set(vexel::window_option::kPartitionBy).set(vexel::window_option::kOrderBy);
  QueryBuilder q(conn_);
  q.SELECT({items_.col("name"), items_.col("category"), vexel::RANK().Over(by_category).AS("rk")})
      .FROM(items_)
      .ORDER_BY({items_.col("category"), col("rk")})
      .LIMIT(3)
      .OFFSET(1);
  EXPECT_EQ(Run(q, {"name", "category", "rk"}),
            (Rows{{"donut", "bakery", "2"}, {"apple", "fruit", "1"}, {"banana", "fruit", "2"}}));
}

TEST_P(RealisticTest, SubqueriesInWhereFromAndJoin) {
  QueryBuilder big_orders(conn_);
  big_orders.SELECT({orders_.col("item_id")})
      .FROM(orders_)
      .WHERE(orders_.col("qty") >= SQLValue(5));
  QueryBuilder totals(conn_);
  totals.SELECT({orders_.col("item_id"), vexel::SUM(orders_.col("qty")).AS("total")})
      .FROM(orders_)
      .GROUP_BY({orders_.col("item_id")});

  QueryBuilder q(conn_);
  q.SELECT({col("i.name"), col("t.total")})
      .FROM(QueryBuilder(conn_)
                .SELECT({items_.col("id"), items_.col("name")})
                .FROM(items_)
                .WHERE(items_.col("id").in(big_orders)),
            "i")
      .JOIN(totals, "t")
      .ON(col("t.item_id") == col("i.id"))
      .ORDER_BY({col("i.name")});
  EXPECT_EQ(Run(q, {"name", "total"}), (Rows{{"apple", "15"}, {"carrot", "7"}}));
}

TEST_P(RealisticTest, GroupedQueryOnPublicViewUsesViewAwareOperation) {
  QueryBuilder q(conn_);
  q.SELECT({vexel::COUNT(col("id")).AS("n"), vexel::MAX(col("price")).AS("top")}).FROM(cheap_view_);
  EXPECT_EQ(Run(q, {"n", "top"}), (Rows{{"3", "6"}}));
  EXPECT_EQ(conn_->last_op(), "ExecuteQueryContainView");
}

INSTANTIATE_TEST_SUITE_P(Engines, RealisticTest,
                         testing::Values(Engine::kSqlite, Engine::kPostgres), EngineName);

}  // namespace
}  // namespace vexel_it
