// WITH statements on SQLite and PostgreSQL, rows checked.
#include "Engines.h"

namespace vexel_it {
namespace {

using vexel::col;
using vexel::QueryBuilder;
using vexel::SQLValue;
using vexel::WithBuilder;

class WithTest : public EngineTest {
 protected:
  Rows RunWith(WithBuilder& w, const std::vector<std::string>& columns) {
    EXPECT_TRUE(w.Execute()) << w.tosql() << "\n" << LastError();
    return ReadRows(*conn_, columns);
  }
};

TEST_P(WithTest, NamedStatementsFeedTheMainOne) {
  QueryBuilder big(conn_);
  big.SELECT({orders_.col("item_id"), orders_.col("qty")})
      .FROM(orders_)
      .WHERE(orders_.col("qty") >= SQLValue(5));
  QueryBuilder main(conn_);
  main.SELECT({items_.col("name"), col("big.qty")})
      .FROM(items_)
      .JOIN(vexel::tab("big"))
      .ON(col("big.item_id") == items_.col("id"))
      .ORDER_BY({col("big.qty").DESC()});
  WithBuilder w(conn_);
  w.AS("big", big).WithDo(main);
  EXPECT_EQ(RunWith(w, {"name", "qty"}), (Rows{{"apple", "10"}, {"carrot", "7"}, {"apple", "5"}}));
  EXPECT_EQ(conn_->last_op(), "ExecuteQuery");
}

TEST_P(WithTest, RecursiveCountsUp) {
  QueryBuilder step(conn_);
  step.SELECT({col("x").increase(SQLValue(1)).AS("x")})
      .FROM(vexel::tab("n"))
      .WHERE(col("x") < SQLValue(5));
  QueryBuilder seed(conn_);
  seed.SELECT({col("min(id)").AS("x")}).FROM(items_).UNION_ALL(step);
  QueryBuilder main(conn_);
  main.SELECT({col("x")}).FROM(vexel::tab("n")).ORDER_BY({col("x")});
  WithBuilder w(conn_);
  w.RECURSIVE().AS("n", seed).WithDo(main);
  EXPECT_EQ(RunWith(w, {"x"}), (Rows{{"1"}, {"2"}, {"3"}, {"4"}, {"5"}}));
  // The time-out form reaches PostgreSQL's own operation; SQLite runs it as
  // a plain query.
  ASSERT_TRUE(w.ExecuteQueryUDT(5)) << LastError();
  EXPECT_EQ(conn_->last_op(), is_sqlite() ? "ExecuteQuery" : "ExecuteQueryUDT");
  EXPECT_EQ(ReadRows(*conn_, {"x"}).size(), 5u);
}

TEST_P(WithTest, DataChangeAsMainStatement) {
  QueryBuilder small(conn_);
  small.SELECT({orders_.col("id")}).FROM(orders_).WHERE(orders_.col("qty") < SQLValue(5));
  vexel::DeleteBuilder del(conn_);
  del.DELETE_FROM(orders_).WHERE(
      col("id").in(QueryBuilder(conn_).SELECT({col("id")}).FROM(vexel::tab("small"))));
  WithBuilder w(conn_);
  w.AS("small", small).WithDo(del);
  ASSERT_TRUE(w.Execute()) << w.tosql() << "\n" << LastError();
  EXPECT_EQ(Query("SELECT id FROM " + schema_ + ".orders ORDER BY id", {"id"}),
            (Rows{{"1"}, {"2"}, {"3"}}));
}

INSTANTIATE_TEST_SUITE_P(Engines, WithTest, testing::Values(Engine::kSqlite, Engine::kPostgres),
                         EngineName);

}  // namespace
}  // namespace vexel_it
