// Real engines: catalogue names that need quoting (one holds a statement) in
// the sequence reset; UPDATE and DELETE whose condition renders empty.
#include "Engines.h"
#include "support/CaptureLog.h"
#include "vexel/CDBSystemInfo.h"

namespace vexel_it {
namespace {

using vexel_test::CaptureLog;

class HardeningIT : public EngineTest {};

// SQLite's own catalogue, read with the type word as SQLite writes it, so
// that its reset runs to the end.
class TableWordConnect : public RecordingConnect {
 public:
  using RecordingConnect::RecordingConnect;
  bool ExecuteQuery(const std::string& sql) override {
    std::string fixed = sql;
    const size_t at = fixed.find("type = 'tab'");
    if (at != std::string::npos) fixed.insert(at + 11, "le");
    return RecordingConnect::ExecuteQuery(fixed);
  }
};

TEST_P(HardeningIT, SequenceResetQuotesCatalogueNames) {
  // SQLite keeps its sequences in the main database, PostgreSQL per schema.
  const std::string s = is_sqlite() ? "" : schema_ + ".";
  const std::string evil = "plain; DELETE FROM " + s + "victims";
  const std::string auto_id = is_sqlite() ? " INTEGER PRIMARY KEY AUTOINCREMENT" : " SERIAL";
  Exec("CREATE TABLE " + s + "victims (v INTEGER)");
  Exec("INSERT INTO " + s + "victims VALUES (1), (2), (3)");
  Exec("CREATE TABLE " + s + "\"" + evil + "\" (id" + auto_id + ", n INTEGER)");
  Exec("INSERT INTO " + s + "\"" + evil + "\" (id) VALUES (4)");
  Exec("CREATE TABLE " + s + "\"Orders\" (\"order\"" + auto_id + ", note TEXT)");
  Exec("INSERT INTO " + s + "\"Orders\" (\"order\") VALUES (7)");
  if (is_sqlite()) Exec("UPDATE sqlite_sequence SET seq = 1");

  auto conn = is_sqlite() ? std::make_shared<TableWordConnect>(raw_) : conn_;
  ASSERT_TRUE(vexel::CDBSystemInfo(conn).SequenceReset()) << LastError();
  EXPECT_EQ(Query("SELECT count(*) AS n FROM " + s + "victims", {"n"}), (Rows{{"3"}}));
  if (is_sqlite()) {
    EXPECT_EQ(Sorted(Query("SELECT name, seq FROM sqlite_sequence", {"name", "seq"})),
              (Rows{{"Orders", "7"}, {evil, "4"}}));
    return;
  }
  const std::string next = "SELECT nextval(pg_get_serial_sequence('" + s;
  EXPECT_EQ(Query(next + "\"" + evil + "\"', 'id')) AS v", {"v"}), (Rows{{"5"}}));
  EXPECT_EQ(Query(next + "\"Orders\"', 'order')) AS v", {"v"}), (Rows{{"8"}}));
}

TEST_P(HardeningIT, EmptyConditionChangesEveryRowUnlessStrict) {
  const vexel::SQLExpr blank("");
  CaptureLog log;
  vexel::UpdateBuilder up(conn_);
  up.UPDATE(items_).SET(vexel::col("price"), vexel::SQLValue(0)).WHERE(blank);
  vexel::DeleteBuilder del(conn_);
  del.DELETE_FROM(orders_).WHERE(blank);
  EXPECT_FALSE(up.set_strict_where(true).Execute());
  EXPECT_FALSE(del.set_strict_where(true).Execute());
  const std::string empty = "]condition renders empty, the statement ";
  EXPECT_EQ(log.texts(), (std::vector<std::string>{
                             "4|[vexel::UpdateBuilder::WHERE" + empty + "changes every row.[",
                             "4|[vexel::DeleteBuilder::WHERE" + empty + "changes every row.[",
                             "5|[vexel::UpdateBuilder::Execute" + empty + "is refused.[",
                             "5|[vexel::DeleteBuilder::Execute" + empty + "is refused.["}));
  const std::string rows = "SELECT (SELECT count(*) FROM " + schema_ +
                           ".items WHERE price > 0) + " + "(SELECT count(*) FROM " + schema_ +
                           ".orders) AS n";
  EXPECT_EQ(Query(rows, {"n"}), (Rows{{"10"}}));
  // Without strict mode the warning is all: both statements run unfiltered.
  EXPECT_TRUE(up.set_strict_where(false).Execute()) << LastError();
  EXPECT_TRUE(del.set_strict_where(false).Execute()) << LastError();
  EXPECT_EQ(Query(rows, {"n"}), (Rows{{"0"}}));
}

INSTANTIATE_TEST_SUITE_P(Engines, HardeningIT, testing::Values(Engine::kSqlite, Engine::kPostgres),
                         EngineName);

}  // namespace
}  // namespace vexel_it
