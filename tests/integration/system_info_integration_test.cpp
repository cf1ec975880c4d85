// The catalogue on real engines: what it lists and finds is checked against
// the schema, tables, inherited tables and sequences each test creates.
#include <algorithm>

#include "Engines.h"
#include "support/CaptureLog.h"
#include "vexel/CDBSystemInfo.h"

namespace vexel_it {
namespace {

using Strings = std::vector<std::string>;
using vexel::CDBSystemInfo;
using vexel_test::CaptureLog;

bool contains(const Strings& list, const std::string& value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

Strings sorted(Strings list) {
  std::sort(list.begin(), list.end());
  return list;
}

class SystemInfoIT : public EngineTest {
 protected:
  // The unsupported-operation line of the SQLite implementation.
  static std::string unsupported(const char* op) {
    return std::string("5|[vexel::CSQLiteSystemInfo::") + op + "]Not support SQLServer![";
  }
};

TEST_P(SystemInfoIT, TablesOfTheSchema) {
  CDBSystemInfo info(conn_);
  Strings tables = {"kept"};
  ASSERT_TRUE(info.GetAllTablesBySchema(schema_, tables));
  // SQLite's catalogue writes the type word 'table', which the 'tab' of
  // the catalogue text never matches (see docs/dialect-notes.md).
  EXPECT_EQ(sorted(tables), is_sqlite() ? Strings{"kept"} : (Strings{"items", "kept", "orders"}));
}

TEST_P(SystemInfoIT, TableExistence) {
  CDBSystemInfo info(conn_);
  bool exists = false;
  ASSERT_TRUE(info.IsExistsInDB(schema_, "items", exists));
  EXPECT_EQ(exists, !is_sqlite());
  exists = true;
  ASSERT_TRUE(info.IsExistsInDB(schema_, "no_such_table", exists));
  EXPECT_FALSE(exists);
  // The items live in the test's schema only.
  exists = true;
  ASSERT_TRUE(info.IsExistsInDB(is_sqlite() ? "main" : "public", "items", exists));
  EXPECT_FALSE(exists);
}

TEST_P(SystemInfoIT, SchemaNames) {
  CDBSystemInfo info(conn_);
  CaptureLog log;
  Strings schemas;
  if (is_sqlite()) {
    EXPECT_FALSE(info.GetAllSchemaName(schemas));
    EXPECT_EQ(log.texts(), (Strings{unsupported("GetAllSchemaName")}));
    return;
  }
  ASSERT_TRUE(info.GetAllSchemaName(schemas));
  EXPECT_TRUE(contains(schemas, schema_));
  EXPECT_TRUE(contains(schemas, "public"));
  EXPECT_TRUE(contains(schemas, "pg_catalog"));
}

TEST_P(SystemInfoIT, ChildTablesOfAParent) {
  CDBSystemInfo info(conn_);
  CaptureLog log;
  Strings children;
  if (is_sqlite()) {
    EXPECT_FALSE(info.GetAllChiledTableByParentTable(schema_ + ".items", children));
    EXPECT_EQ(log.texts(), (Strings{unsupported("GetAllChiledTableByParentTable")}));
    return;
  }
  const std::string s = schema_ + ".";
  Exec("CREATE TABLE " + s + "events (id INTEGER, at TEXT)");
  Exec("CREATE TABLE " + s + "events_2025 () INHERITS (" + s + "events)");
  Exec("CREATE TABLE " + s + "events_2026 (extra TEXT) INHERITS (" + s + "events)");
  Exec("CREATE TABLE " + s + "events_2026_q1 () INHERITS (" + s + "events_2026)");
  ASSERT_TRUE(info.GetAllChiledTableByParentTable(s + "events", children));
  // Direct children only.
  EXPECT_EQ(sorted(children), (Strings{"events_2025", "events_2026"}));
  children.clear();
  ASSERT_TRUE(info.GetAllChiledTableByParentTable(s + "items", children));
  EXPECT_TRUE(children.empty());
  EXPECT_FALSE(info.GetAllChiledTableByParentTable(schema_ + "events", children));
  EXPECT_EQ(log.texts(), (Strings{"5|[vexel::CPGSystemInfo::GetAllChiledTableByParentTable]"
                                  "parent_table_name[" +
                                  schema_ + "events] error.["}));
}

TEST_P(SystemInfoIT, SequenceResetMovesSequencesPastTheData) {
  CDBSystemInfo info(conn_);
  if (is_sqlite()) {
    // The existence check asks for type 'tab', so a real sqlite_sequence
    // is never found: logged, true, and nothing changes.
    Exec("CREATE TABLE tickets (id INTEGER PRIMARY KEY AUTOINCREMENT, note TEXT)");
    Exec("INSERT INTO tickets (id, note) VALUES (5, 'e')");
    Exec("UPDATE sqlite_sequence SET seq = 1 WHERE name = 'tickets'");
    CaptureLog log;
    EXPECT_TRUE(info.SequenceReset());
    EXPECT_EQ(log.texts(),
              (Strings{"4|[vexel::CSQLiteSystemInfo::SequenceReset]No tab sqlite_sequence.["}));
    EXPECT_EQ(Query("SELECT seq FROM sqlite_sequence WHERE name = 'tickets'", {"seq"}),
              (Rows{{"1"}}));
    return;
  }
  const std::string s = schema_ + ".";
  Exec("CREATE TABLE " + s + "tickets (id SERIAL PRIMARY KEY, note TEXT)");
  Exec("INSERT INTO " + s + "tickets (id, note) VALUES (1, 'a'), (7, 'b'), (5, 'c')");
  Exec("CREATE TABLE " + s + "notes (n BIGSERIAL, body TEXT)");
  Exec("INSERT INTO " + s + "notes (n, body) VALUES (40, 'x')");
  // A second table drawing from the tickets' sequence: the sequence is
  // set from the first table by name, "later_tickets" < "tickets".
  Exec("CREATE TABLE " + s + "later_tickets (id INTEGER DEFAULT nextval('" + s +
       "tickets_id_seq'), note TEXT)");
  Exec("INSERT INTO " + s + "later_tickets (id, note) VALUES (100, 'z')");

  CaptureLog log;
  ASSERT_TRUE(info.SequenceReset());
  const std::string done =
      "3|[vexel::CPGSystemInfo::SetMapSeqValue]SET SEQUENCE SUCCESS, SEQ_NAME: ";
  EXPECT_TRUE(contains(log.texts(), done + s + "tickets_id_seq.["));
  EXPECT_TRUE(contains(log.texts(), done + s + "notes_n_seq.["));
  EXPECT_EQ(Query("SELECT last_value, is_called FROM " + s + "tickets_id_seq",
                  {"last_value", "is_called"}),
            (Rows{{"101", "f"}}));
  EXPECT_EQ(Query("SELECT nextval('" + s + "notes_n_seq') AS v", {"v"}), (Rows{{"41"}}));
}

// Cases that exist on one engine only.
class PostgresSystemInfoIT : public SystemInfoIT {};
class SqliteSystemInfoIT : public SystemInfoIT {};

TEST_P(PostgresSystemInfoIT, SequenceOfAnEmptyTableCannotBeSetToZero) {
  const std::string s = schema_ + ".";
  Exec("CREATE TABLE " + s + "empty_box (id SERIAL, note TEXT)");
  CDBSystemInfo info(conn_);
  CaptureLog log;
  // setval(..., 0, false) is below the sequence's minimum of 1: the server
  // refuses, and the reset stops with the failure lines.
  EXPECT_FALSE(info.SequenceReset());
  EXPECT_TRUE(contains(log.texts(),
                       "5|[vexel::CPGSystemInfo::SetMapSeqValue]SET SEQUENCE "
                       "Failed, SEQ_NAME: " +
                           s + "empty_box_id_seq.["));
  EXPECT_TRUE(contains(conn_->calls(),
                       "ExecuteQuery:SELECT setval('" + s + "empty_box_id_seq', 0, false);"));
}

// SQLite with the catalogue's type word read as SQLite writes it: runs the
// rest of the reset (PRAGMA, maximum, UPDATE) on the real engine.
class TableWordConnect : public RecordingConnect {
 public:
  using RecordingConnect::RecordingConnect;
  bool ExecuteQuery(const std::string& sql) override {
    std::string fixed = sql;
    const std::string from = "type = 'tab'";
    const size_t at = fixed.find(from);
    if (at != std::string::npos) fixed.replace(at, from.size(), "type = 'table'");
    return RecordingConnect::ExecuteQuery(fixed);
  }
};

TEST_P(SqliteSystemInfoIT, SqliteSequenceResetWhenTheTableIsFound) {
  Exec("CREATE TABLE tickets (id INTEGER PRIMARY KEY AUTOINCREMENT, note TEXT)");
  Exec("CREATE TABLE notes (note TEXT, n INTEGER PRIMARY KEY AUTOINCREMENT)");
  Exec("INSERT INTO tickets (id, note) VALUES (3, 'a'), (9, 'b')");
  Exec("INSERT INTO notes (n, note) VALUES (4, 'x')");
  Exec("DELETE FROM notes");
  Exec("UPDATE sqlite_sequence SET seq = 1");

  auto conn = std::make_shared<TableWordConnect>(raw_);
  CDBSystemInfo info(conn);
  CaptureLog log;
  ASSERT_TRUE(info.SequenceReset());
  EXPECT_TRUE(log.texts().empty());
  EXPECT_EQ(Sorted(Query("SELECT name, seq FROM sqlite_sequence", {"name", "seq"})),
            (Rows{{"notes", "0"}, {"tickets", "9"}}));
  EXPECT_TRUE(contains(conn->calls(), "ExecuteQuery:PRAGMA table_info(notes)"));
  EXPECT_TRUE(contains(conn->calls(), "ExecuteQuery:SELECT max(n) FROM notes;"));
}

INSTANTIATE_TEST_SUITE_P(Engines, SystemInfoIT, testing::Values(Engine::kSqlite, Engine::kPostgres),
                         EngineName);
INSTANTIATE_TEST_SUITE_P(Engines, PostgresSystemInfoIT, testing::Values(Engine::kPostgres),
                         EngineName);
INSTANTIATE_TEST_SUITE_P(Engines, SqliteSystemInfoIT, testing::Values(Engine::kSqlite), EngineName);

}  // namespace
}  // namespace vexel_it
