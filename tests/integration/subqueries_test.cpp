// Subqueries as values and INSERT ... SELECT on both engines.
#include "Engines.h"

namespace vexel_it {
namespace {

using vexel::col;

class SubqueryTest : public EngineTest {};

TEST_P(SubqueryTest, InsertSelectComparisonsAndExists) {
  Exec("CREATE TABLE $.cheap (id INTEGER PRIMARY KEY, name TEXT)");
  const vexel::tab cheap = vexel::sch(s_).tab("cheap");
  // The donut's price, 5, as a scalar subquery.
  vexel::QueryBuilder donut(db_);
  donut.SELECT({items_.col("price")}).FROM(items_).WHERE(items_.col("id") == 4);
  vexel::QueryBuilder below(db_);
  below.SELECT({items_.col("id"), items_.col("name")}).FROM(items_);
  below.WHERE(items_.col("price") < donut);
  vexel::InsertBuilder ins(db_);
  ins.INSERT_INTO(cheap).COLUMNS({col("id"), col("name")}).SELECT(below).RETURNING({col("id")});
  EXPECT_EQ(Sorted(Run(ins)), R("1; 2; 3")) << ins.tosql();
  // Every item again: the three rows there already take the new name.
  vexel::QueryBuilder all(db_);
  all.SELECT({items_.col("id"), col("'new'")}).FROM(items_).WHERE(items_.col("price") >= donut);
  all.OR(items_.col("price") != donut);
  vexel::InsertBuilder upsert(db_);
  upsert.INSERT_INTO(cheap).COLUMNS({col("id"), col("name")}).SELECT(all);
  upsert.ON_CONFLICT({col("id")}).DO_UPDATE().SET(col("name"), col("name").EXCLUDED());
  ASSERT_TRUE(upsert.Execute()) << upsert.tosql() << "\n" << ErrorOf(*db_);
  EXPECT_EQ(Query("SELECT id, name FROM $.cheap ORDER BY id"),
            R("1|new; 2|new; 3|new; 4|new; 5|new"));
  // Items with orders, and how many each has.
  vexel::QueryBuilder ordered(db_);
  ordered.SELECT({col("count(*)")}).FROM(orders_).WHERE(orders_.col("item_id") == items_.col("id"));
  vexel::QueryBuilder orders(db_);
  orders.SELECT({orders_.col("id")}).FROM(orders_);
  orders.WHERE(orders_.col("item_id") == items_.col("id"));
  vexel::QueryBuilder q(db_);
  q.SELECT({items_.col("name"), vexel::scalar_subquery(ordered, "n")}).FROM(items_);
  q.WHERE(vexel::EXISTS(orders)).AND(items_.col("price") <= donut);
  EXPECT_EQ(Sorted(Run(q)), R("apple|2; carrot|1; donut|1")) << q.tosql();
  vexel::QueryBuilder none(db_);
  none.SELECT({items_.col("name")}).FROM(items_).WHERE(vexel::NOT_EXISTS(orders));
  none.AND(items_.col("price") > donut);
  EXPECT_EQ(Run(none), R("eclair")) << none.tosql();
}

VEXEL_ON_BOTH_ENGINES(SubqueryTest);

}  // namespace
}  // namespace vexel_it
