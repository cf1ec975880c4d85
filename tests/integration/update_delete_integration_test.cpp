// Updates (single, subquery, multi-table, batch, RETURNING) and deletes run
// on SQLite and PostgreSQL, each read back from the engine.
#include "Engines.h"

namespace vexel_it {
namespace {

using vexel::col;
using vexel::DeleteBuilder;
using vexel::SQLValue;
using vexel::UpdateBuilder;

class UpdateDeleteTest : public EngineTest {
 protected:
  Rows Items(const std::string& where) {
    return Query(
        "SELECT id, name, price FROM " + schema_ + ".items WHERE " + where + " ORDER BY id",
        {"id", "name", "price"});
  }
  Rows Ids(const std::string& table) {
    return Query("SELECT id FROM " + schema_ + "." + table + " ORDER BY id", {"id"});
  }
};

TEST_P(UpdateDeleteTest, UpdateAssignsWhereTheConditionHolds) {
  UpdateBuilder up(conn_);
  up.UPDATE(items_).SET(col("price"), SQLValue(9)).SET(col("name"), SQLValue("ripe"));
  up.WHERE(col("id") == 1).OR(col("id") == 3);
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
  EXPECT_EQ(conn_->last_op(), "ExecuteUpdate");
  EXPECT_EQ(Items("id <= 3"), (Rows{{"1", "ripe", "9"}, {"2", "banana", "2"}, {"3", "ripe", "9"}}));
}

TEST_P(UpdateDeleteTest, UpdateFromColumnExpressionAndSubquery) {
  vexel::QueryBuilder qty(conn_);
  qty.SELECT({orders_.col("qty")}).FROM(orders_).WHERE(orders_.col("id") == 3);
  UpdateBuilder up(conn_);
  up.UPDATE(items_).SET(col("price"), qty).SET(col("name"), col("category"));
  up.WHERE(col("id") == 2);
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
  UpdateBuilder inc(conn_);
  inc.UPDATE(items_).SET(col("price"), vexel::SQLExpr("price + 1")).WHERE(col("id") == 5);
  ASSERT_TRUE(inc.Execute()) << inc.tosql() << "\n" << LastError();
  EXPECT_EQ(Items("id IN (2, 5)"), (Rows{{"2", "fruit", "7"}, {"5", "eclair", "7"}}));
}

TEST_P(UpdateDeleteTest, UpdateReturningRowsAreReadFromTheConnection) {
  UpdateBuilder up(conn_);
  up.UPDATE(items_).SET(col("price"), SQLValue(0)).WHERE(col("category") == SQLValue("bakery"));
  up.RETURNING({col("id")}).RETURNING({col("price")});
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
  EXPECT_EQ(conn_->last_op(), "ExecuteReturning");
  EXPECT_EQ(Sorted(ReadRows(*conn_, {"id", "price"})), (Rows{{"4", "0"}, {"5", "0"}}));
  EXPECT_EQ(Items("price = 0"), (Rows{{"4", "donut", "0"}, {"5", "eclair", "0"}}));
}

// SQLite writes the rows as CASE expressions, PostgreSQL joins a VALUES list.
TEST_P(UpdateDeleteTest, BatchUpdateWritesEachRow) {
  UpdateBuilder up(conn_);
  up.UPDATE(items_).BATCH_SET({col("price"), col("name")}).BATCH_CONDITION({col("id")});
  up.BATCH_VALUES({col("id"), col("price"), col("name")},
                  {{1, 11, "a"}, {3, 13, "c"}, {5, 15, "e"}});
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
  EXPECT_EQ(Items("1 = 1"), (Rows{{"1", "a", "11"},
                                  {"2", "banana", "2"},
                                  {"3", "c", "13"},
                                  {"4", "donut", "5"},
                                  {"5", "e", "15"}}));
}

TEST_P(UpdateDeleteTest, BatchUpdateWithTwoKeys) {
  UpdateBuilder up(conn_);
  up.UPDATE(items_).BATCH_SET({col("price")}).BATCH_CONDITION({col("id"), col("category")});
  // (2, 'vegetable') matches no row: banana is fruit.
  up.BATCH_VALUES({col("id"), col("category"), col("price")},
                  {{1, "fruit", 21}, {2, "vegetable", 22}, {4, "bakery", 24}});
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
  EXPECT_EQ(
      Items("id <= 4"),
      (Rows{
          {"1", "apple", "21"}, {"2", "banana", "2"}, {"3", "carrot", "1"}, {"4", "donut", "24"}}));
}

TEST_P(UpdateDeleteTest, MultiTableUpdateTakesTheOtherTablesValue) {
  UpdateBuilder up(conn_);
  up.UPDATE(items_).UNION_SET(col("price"), orders_.col("qty")).UNION_FROM({orders_});
  up.UNION_CONDITION(items_.col("id"), orders_.col("item_id"));
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
  // Apple has two orders (either may win); banana has none and keeps its price.
  EXPECT_EQ(Items("id IN (2, 3, 4)"),
            (Rows{{"2", "banana", "2"}, {"3", "carrot", "7"}, {"4", "donut", "1"}}));
}

TEST_P(UpdateDeleteTest, VacuumRunsOnPostgres) {
  UpdateBuilder up(conn_);
  up.VACUUM({items_});
  if (is_sqlite()) {
    EXPECT_EQ(up.tosql(), "");
    return;
  }
  EXPECT_EQ(up.tosql(), "VACUUM " + schema_ + ".items;");
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
}

TEST_P(UpdateDeleteTest, DeleteRemovesTheMatchingRows) {
  DeleteBuilder del(conn_);
  del.DELETE_FROM(orders_).WHERE(col("qty") < SQLValue(3)).OR(col("id") == 1);
  ASSERT_TRUE(del.Execute()) << del.tosql() << "\n" << LastError();
  EXPECT_EQ(conn_->last_op(), "ExecuteUpdate");
  EXPECT_EQ(Ids("orders"), (Rows{{"2"}, {"3"}}));
  DeleteBuilder all(conn_);
  ASSERT_TRUE(all.DELETE_FROM(orders_).Execute()) << all.tosql() << "\n" << LastError();
  EXPECT_EQ(Ids("orders"), Rows{});
}

TEST_P(UpdateDeleteTest, DeleteReturningRowsAreReadFromTheConnection) {
  DeleteBuilder del(conn_);
  del.DELETE_FROM(items_).WHERE(col("category") == SQLValue("fruit"));
  del.RETURNING({col("id")}).RETURNING({col("name")});
  ASSERT_TRUE(del.Execute()) << del.tosql() << "\n" << LastError();
  EXPECT_EQ(conn_->last_op(), "ExecuteReturning");
  EXPECT_EQ(Sorted(ReadRows(*conn_, {"id", "name"})), (Rows{{"1", "apple"}, {"2", "banana"}}));
  EXPECT_EQ(Ids("items"), (Rows{{"3"}, {"4"}, {"5"}}));
}

TEST_P(UpdateDeleteTest, FailedStatementsReportFalse) {
  UpdateBuilder up(conn_);
  up.UPDATE(items_);  // no assignment: "UPDATE ... SE"
  EXPECT_FALSE(up.Execute());
  DeleteBuilder del(conn_);
  del.DELETE_FROM(vexel::sch(schema_).tab("missing"));
  EXPECT_FALSE(del.Execute());
  EXPECT_EQ(Ids("items").size(), 5u);
}

INSTANTIATE_TEST_SUITE_P(Engines, UpdateDeleteTest,
                         testing::Values(Engine::kSqlite, Engine::kPostgres), EngineName);

}  // namespace
}  // namespace vexel_it
