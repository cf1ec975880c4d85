// Real engines: catalogue names that need quoting (one holds a statement) in
// the sequence reset; UPDATE and DELETE whose condition renders empty.
#include "Engines.h"
#include "vexel/CDBSystemInfo.h"

namespace vexel_it {
namespace {

using Strings = std::vector<std::string>;
class HardeningTest : public EngineTest {};

TEST_P(HardeningTest, SequenceResetQuotesCatalogueNames) {
  // SQLite keeps its counters in the main database, PostgreSQL per schema.
  std::shared_ptr<tessel::RowsConnect> db = db_;
  if (lite()) db = std::make_shared<TableWordConnect>();
  const std::string s = lite() ? "" : s_ + ".";
  const std::string evil = s + "\"plain; DELETE FROM " + s + "victims\"";
  const std::string id = lite() ? " INTEGER PRIMARY KEY AUTOINCREMENT" : " SERIAL";
  const std::string setup = "CREATE TABLE " + s + "victims (v INTEGER); INSERT INTO " + s +
                            "victims VALUES (1), (2), (3);" + "CREATE TABLE " + evil + " (id" + id +
                            ", n INTEGER); INSERT INTO " + evil + " (id) VALUES (4);" +
                            "CREATE TABLE " + s + "\"Orders\" (\"order\"" + id + ", note TEXT);" +
                            "INSERT INTO " + s + "\"Orders\" (\"order\") VALUES (7)" +
                            (lite() ? "; UPDATE sqlite_sequence SET seq = 1" : "");
  ASSERT_TRUE(db->ExecuteUpdate(setup)) << ErrorOf(*db);
  ASSERT_TRUE(vexel::CDBSystemInfo(db).SequenceReset()) << ErrorOf(*db);
  auto rows = [&](const std::string& sql) {
    EXPECT_TRUE(db->ExecuteQuery(sql)) << sql << "\n" << ErrorOf(*db);
    return Sorted(ReadAll(*db));
  };
  EXPECT_EQ(rows("SELECT count(*) FROM " + s + "victims"), R("3"));
  if (lite()) {
    EXPECT_EQ(rows("SELECT name, seq FROM sqlite_sequence"),
              (Rows{{"Orders", "7"}, {"plain; DELETE FROM victims", "4"}}));
    return;
  }
  const std::string next = "SELECT nextval(pg_get_serial_sequence('";
  EXPECT_EQ(rows(next + evil + "', 'id'))"), R("5"));
  EXPECT_EQ(rows(next + s + "\"Orders\"', 'order'))"), R("8"));
}

TEST_P(HardeningTest, EmptyConditionChangesEveryRowUnlessStrict) {
  const vexel::SQLExpr blank("");
  log_.clear();
  vexel::UpdateBuilder up(db_);
  up.UPDATE(items_).SET(vexel::col("price"), vexel::SQLValue(0)).WHERE(blank);
  vexel::DeleteBuilder del(db_);
  del.DELETE_FROM(orders_).WHERE(blank);
  EXPECT_FALSE(up.set_strict_where(true).Execute());
  EXPECT_FALSE(del.set_strict_where(true).Execute());
  const std::string empty = "]condition renders empty, the statement ";
  EXPECT_EQ(log_.texts(), (Strings{"4|[vexel::UpdateBuilder::WHERE" + empty + "changes every row.[",
                                   "4|[vexel::DeleteBuilder::WHERE" + empty + "changes every row.[",
                                   "5|[vexel::UpdateBuilder::Execute" + empty + "is refused.[",
                                   "5|[vexel::DeleteBuilder::Execute" + empty + "is refused.["}));
  const std::string count =
      "SELECT (SELECT count(*) FROM $.items WHERE price > 0) + (SELECT count(*) FROM $.orders)";
  EXPECT_EQ(Query(count), R("10"));
  // Without strict mode the warning is all: both statements run unfiltered.
  EXPECT_TRUE(up.set_strict_where(false).Execute()) << ErrorOf(*db_);
  EXPECT_TRUE(del.set_strict_where(false).Execute()) << ErrorOf(*db_);
  EXPECT_EQ(Query(count), R("0"));
}

VEXEL_ON_BOTH_ENGINES(HardeningTest);

}  // namespace
}  // namespace vexel_it
