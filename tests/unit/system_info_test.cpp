// The catalogue facade: which implementation a dialect gets, the catalogue
// texts it runs, how rows come back through the cursor, and the exact lines
// for unsupported operations, bad input and failed statements.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/CDBSystemInfo.h"

namespace {

using vexel::CDBSystemInfo;
using vexel_test::CaptureLog;
using vexel_test::FakeConnect;
using vexel_test::FakeResult;
using Strings = std::vector<std::string>;

// Fails the one statement that starts with `prefix` (on whichever execute
// operation it reaches), so a test can break a multi-statement operation at
// a chosen step.
class FailingAt : public FakeConnect {
 public:
  FailingAt(int db_type, std::string prefix) : FakeConnect(db_type), prefix_(std::move(prefix)) {}
  bool ExecuteQuery(const std::string& sql) override {
    return run_maybe_failing("ExecuteQuery", sql, [&] { return FakeConnect::ExecuteQuery(sql); });
  }
  bool ExecuteUpdate(const std::string& sql) override {
    return run_maybe_failing("ExecuteUpdate", sql, [&] { return FakeConnect::ExecuteUpdate(sql); });
  }

 private:
  bool run_maybe_failing(const std::string& op, const std::string& sql,
                         const std::function<bool()>& call) {
    const bool fail = !prefix_.empty() && sql.compare(0, prefix_.size(), prefix_) == 0;
    if (fail) FailOn(op);
    const bool ok = call();
    if (fail) Succeed(op);
    return ok;
  }
  std::string prefix_;
};

// What one operation did on one dialect.
struct Outcome {
  bool ok;
  Strings statements;  // "Op:sql"
  Strings out;         // the output vector, or "exists=0/1"
  Strings log;         // "level|[function]message.["
};

struct OpCase {
  const char* name;
  std::function<bool(CDBSystemInfo&, Strings&)> run;
  FakeResult rows;  // the result handed to the first query
  bool fail;        // the first query fails
  Outcome sqlite, postgres, sqlserver;
  // 7 takes the PostgreSQL implementation.
  const Outcome& at(int code) const {
    return code == 1 ? sqlite : code == 3 ? sqlserver : postgres;
  }
};

auto is_exists(const std::string& schema, const std::string& table) {
  return [=](CDBSystemInfo& info, Strings& out) {
    bool exists = true;  // overwritten on success
    const bool ok = info.IsExistsInDB(schema, table, exists);
    out.push_back(exists ? "exists=1" : "exists=0");
    return ok;
  };
}
auto tables_of(const std::string& schema) {
  return [=](CDBSystemInfo& info, Strings& out) { return info.GetAllTablesBySchema(schema, out); };
}
auto children_of(const std::string& parent) {
  return [=](CDBSystemInfo& info, Strings& out) {
    return info.GetAllChiledTableByParentTable(parent, out);
  };
}
auto schemas() {
  return [](CDBSystemInfo& info, Strings& out) { return info.GetAllSchemaName(out); };
}

const char* kPgExists =
    "ExecuteQuery:SELECT tablename FROM pg_catalog.pg_tables WHERE schemaname = 's' AND "
    "tablename = 't';";
const char* kLiteExists =
    "ExecuteQuery:SELECT name FROM s.sqlite_master WHERE name = 't' AND type = 'tab';";
const char* kPgTables =
    "ExecuteQuery:SELECT tablename FROM pg_catalog.pg_tables WHERE schemaname = 's';";
const char* kLiteTables = "ExecuteQuery:SELECT name FROM s.sqlite_master WHERE type = 'tab';";
const char* kPgChildren =
    "ExecuteQuery:select c.relname as the_tablename from pg_class c join pg_inherits i on "
    "i.inhrelid = c.oid join pg_class d on d.oid = i.inhparent JOIN pg_namespace pn ON pn.oid = "
    "d.relnamespace where pn.nspname = 's' AND d.relname = 'p';";
const char* kPgSchemas = "ExecuteQuery:SELECT nspname FROM pg_namespace;";

std::string unsupported(const char* cls, const char* op) {
  return std::string("5|[vexel::") + cls + "::" + op + "]Not support SQLServer![";
}
std::string bad_parent(const std::string& parent) {
  return "5|[vexel::CPGSystemInfo::GetAllChiledTableByParentTable]parent_table_name[" + parent +
         "] error.[";
}
std::string failed(const char* function, const std::string& statement) {
  const std::string sql = statement.substr(statement.find(':') + 1);
  return std::string("5|[vexel::") + function +
         "]ExecuteQuery failed errorcode:42.error_info:boom,sql:" + sql + ".[";
}

// Rows carry both catalogues' column names; each dialect reads its own.
const FakeResult kTwoRows = {
    {{"tablename", "a"}, {"name", "a"}, {"the_tablename", "a"}, {"nspname", "a"}},
    {{"tablename", "b"}, {"name", "b"}, {"the_tablename", "b"}, {"nspname", "b"}}};

const OpCase kOps[] = {
    {"table exists",
     is_exists("s", "t"),
     {{{"tablename", "t"}, {"name", "t"}}},
     false,
     {true, {kLiteExists}, {"exists=1"}, {}},
     {true, {kPgExists}, {"exists=1"}, {}},
     {false, {}, {"exists=1"}, {unsupported("CSQLServerSystemInfo", "IsExistsInDB")}}},
    {"table missing: no row",
     is_exists("s", "t"),
     {},
     false,
     {true, {kLiteExists}, {"exists=0"}, {}},
     {true, {kPgExists}, {"exists=0"}, {}},
     {false, {}, {"exists=1"}, {unsupported("CSQLServerSystemInfo", "IsExistsInDB")}}},
    {"existence query fails, flag untouched",
     is_exists("s", "t"),
     {},
     true,
     {false, {kLiteExists}, {"exists=1"}, {failed("CSQLiteSystemInfo::IsExistsInDB", kLiteExists)}},
     {false, {kPgExists}, {"exists=1"}, {failed("CPGSystemInfo::IsExistsInDB", kPgExists)}},
     {false, {}, {"exists=1"}, {unsupported("CSQLServerSystemInfo", "IsExistsInDB")}}},
    {"tables of a schema",
     tables_of("s"),
     kTwoRows,
     false,
     {true, {kLiteTables}, {"a", "b"}, {}},
     {true,
      {kPgTables},
      {"a", "b"},
      {"2|[vexel::CPGSystemInfo::GetAllTablesBySchema]schema_name:s.["}},
     {false, {}, {}, {unsupported("CSQLServerSystemInfo", "GetAllTablesBySchema")}}},
    {"tables of an empty schema",
     tables_of("s"),
     {},
     false,
     {true, {kLiteTables}, {}, {}},
     {true, {kPgTables}, {}, {"2|[vexel::CPGSystemInfo::GetAllTablesBySchema]schema_name:s.["}},
     {false, {}, {}, {unsupported("CSQLServerSystemInfo", "GetAllTablesBySchema")}}},
    {"tables query fails",
     tables_of("s"),
     kTwoRows,
     true,
     {false, {kLiteTables}, {}, {failed("CSQLiteSystemInfo::GetAllTablesBySchema", kLiteTables)}},
     {false,
      {kPgTables},
      {},
      {"2|[vexel::CPGSystemInfo::GetAllTablesBySchema]schema_name:s.[",
       failed("CPGSystemInfo::GetAllTablesBySchema", kPgTables)}},
     {false, {}, {}, {unsupported("CSQLServerSystemInfo", "GetAllTablesBySchema")}}},
    {"child tables",
     children_of("s.p"),
     kTwoRows,
     false,
     {false, {}, {}, {unsupported("CSQLiteSystemInfo", "GetAllChiledTableByParentTable")}},
     {true, {kPgChildren}, {"a", "b"}, {}},
     {false, {}, {}, {unsupported("CSQLServerSystemInfo", "GetAllChiledTableByParentTable")}}},
    {"schemas",
     schemas(),
     kTwoRows,
     false,
     {false, {}, {}, {unsupported("CSQLiteSystemInfo", "GetAllSchemaName")}},
     {true, {kPgSchemas}, {"a", "b"}, {}},
     {false, {}, {}, {unsupported("CSQLServerSystemInfo", "GetAllSchemaName")}}},
    {"schemas query fails",
     schemas(),
     kTwoRows,
     true,
     {false, {}, {}, {unsupported("CSQLiteSystemInfo", "GetAllSchemaName")}},
     {false, {kPgSchemas}, {}, {failed("CPGSystemInfo::GetAllSchemaName", kPgSchemas)}},
     {false, {}, {}, {unsupported("CSQLServerSystemInfo", "GetAllSchemaName")}}},
};

TEST(SystemInfoTest, OperationsPerDialect) {
  for (const OpCase& c : kOps) {
    for (int code : vexel_test::kDialects) {
      SCOPED_TRACE(std::string(c.name) + " on dialect " + std::to_string(code));
      auto conn = vexel_test::fake(code);
      conn->QueueResult(c.rows);
      if (c.fail) conn->FailOn("ExecuteQuery");
      CDBSystemInfo info(conn);
      CaptureLog log;
      Strings out;
      const bool ok = c.run(info, out);
      const Outcome& want = c.at(code);
      EXPECT_EQ(ok, want.ok);
      EXPECT_EQ(conn->statements(), want.statements);
      EXPECT_EQ(out, want.out);
      EXPECT_EQ(log.texts(), want.log);
      EXPECT_EQ(conn->count("GetLastError"), c.fail && !want.statements.empty() ? 1 : 0);
    }
  }
}

TEST(SystemInfoTest, OutputVectorsAreAppendedTo) {
  auto conn = vexel_test::fake(2);
  conn->QueueResult(kTwoRows);
  CDBSystemInfo info(conn);
  Strings tables = {"kept"};
  EXPECT_TRUE(info.GetAllTablesBySchema("s", tables));
  EXPECT_EQ(tables, (Strings{"kept", "a", "b"}));
}

TEST(SystemInfoTest, ParentNameMustBeSchemaDotTable) {
  for (const char* parent : {"a.b.c", "ab", "", ".b", "a.", "."}) {
    SCOPED_TRACE(parent);
    auto conn = vexel_test::fake(2);
    CDBSystemInfo info(conn);
    CaptureLog log;
    Strings children;
    EXPECT_FALSE(info.GetAllChiledTableByParentTable(parent, children));
    EXPECT_TRUE(conn->statements().empty());
    EXPECT_EQ(log.texts(), (Strings{bad_parent(parent)}));
  }
}

TEST(SystemInfoTest, ConstructionLogsTheDialect) {
  for (int code : {1, 2, 3, 7, 0}) {
    CaptureLog log;
    CDBSystemInfo info(vexel_test::fake(code));
    EXPECT_EQ(
        log.texts(),
        (Strings{"3|[vexel::CDBSystemInfo::CDBSystemInfo]db_type:" + std::to_string(code) + ".["}));
  }
}

TEST(SystemInfoTest, NoConnectionAnswersEveryCallWithFalse) {
  CaptureLog log;
  CDBSystemInfo info(nullptr);
  bool exists = true;
  Strings out;
  EXPECT_FALSE(info.IsExistsInDB("s", "t", exists));
  EXPECT_FALSE(info.SequenceReset());
  EXPECT_FALSE(info.GetAllTablesBySchema("s", out));
  EXPECT_FALSE(info.GetAllChiledTableByParentTable("s.t", out));
  EXPECT_FALSE(info.GetAllSchemaName(out));
  EXPECT_TRUE(exists);
  EXPECT_TRUE(out.empty());
  const std::string missing = "]dbsystem_info_ptr_ is nullptr.[";
  EXPECT_EQ(log.texts(),
            (Strings{"6|[vexel::CDBSystemInfo::CDBSystemInfo]db_conn is nullptr.[",
                     "5|[vexel::CDBSystemInfo::IsExistsInDB" + missing,
                     "5|[vexel::CDBSystemInfo::SequenceReset" + missing,
                     "5|[vexel::CDBSystemInfo::GetAllTablesBySchema" + missing,
                     "5|[vexel::CDBSystemInfo::GetAllChiledTableByParentTable" + missing,
                     "5|[vexel::CDBSystemInfo::GetAllSchemaName" + missing}));
}

TEST(SystemInfoTest, CopiesShareAndMovedFromLogs) {
  auto conn = vexel_test::fake(2);
  CDBSystemInfo original(conn);
  CDBSystemInfo copy(original);
  CDBSystemInfo moved(std::move(original));
  Strings out;
  EXPECT_TRUE(copy.GetAllSchemaName(out));
  EXPECT_TRUE(moved.GetAllSchemaName(out));
  CaptureLog log;
  EXPECT_FALSE(original.GetAllSchemaName(out));  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(log.texts(), (Strings{"5|[vexel::CDBSystemInfo::GetAllSchemaName]dbsystem_info_ptr_ "
                                  "is nullptr.["}));
}

TEST(SystemInfoTest, SqlServerSequenceResetIsUnsupported) {
  auto conn = vexel_test::fake(3);
  CDBSystemInfo info(conn);
  CaptureLog log;
  EXPECT_FALSE(info.SequenceReset());
  EXPECT_TRUE(conn->statements().empty());
  EXPECT_EQ(log.texts(), (Strings{unsupported("CSQLServerSystemInfo", "SequenceReset")}));
}

// ---- PostgreSQL sequence reset ------------------------------------------

const char* kPgUserSchemas =
    "ExecuteQuery:SELECT nspname FROM pg_namespace WHERE nspname NOT ILIKE 'pg_%' AND nspname "
    "NOT ILIKE 'sql_%' AND nspname NOT ILIKE 'information_%';";

// Queues a PostgreSQL catalogue with schemas public and s and three
// sequence-backed columns, listed out of order; the maxima follow in the
// order the columns are visited (by table, then column).
void queue_pg_catalogue(FakeConnect& conn, const Strings& maxima) {
  conn.QueueResult({{{"nspname", "public"}}, {{"nspname", "s"}}});
  conn.QueueResult({{{"tab_name", "s.b"}, {"col_name", "id"}, {"seq_name", "s.b_id_seq"}},
                    {{"tab_name", "s.a"}, {"col_name", "n"}, {"seq_name", "s.a_n_seq"}},
                    {{"tab_name", "s.a"}, {"col_name", "id"}, {"seq_name", "a_id_seq"}}});
  for (const std::string& max : maxima) {
    conn.QueueResult({{{"max", max}}});
    conn.QueueResult({});  // setval
  }
}

TEST(SystemInfoTest, PgSequenceResetSetsEachSequencePastItsColumn) {
  auto conn = vexel_test::fake(2);
  queue_pg_catalogue(*conn, {"41", "", "0"});
  CDBSystemInfo info(conn);
  CaptureLog log;
  EXPECT_TRUE(info.SequenceReset());

  const Strings statements = conn->statements();
  ASSERT_EQ(statements.size(), 8u);
  EXPECT_EQ(statements[0], kPgUserSchemas);
  // The catalogue query: "%" fills the first slot, the quoted schema list
  // the second; its blanks are kept as hosts recognise them.
  const std::string& seq = statements[1];
  EXPECT_EQ(seq.rfind("ExecuteQuery:WITH seq_tab AS      ", 0), 0u);
  EXPECT_NE(seq.find("ILIKE 'nextval%'                                     "), std::string::npos);
  EXPECT_NE(seq.find("WHERE nspname IN('public' ,'s')) ORDER BY tab_name ASC)            SELECT"),
            std::string::npos);
  EXPECT_NE(seq.find("(SELECT            (t_4.nspname || '.' || t_2.relname) AS tab_name"),
            std::string::npos);
  EXPECT_NE(
      seq.find("SPLIT_PART(pg_get_expr(t_1.adbin, 'pg_catalog.pg_class'::regclass), '''', 2)"),
      std::string::npos);
  const std::string tail = "SELECT tab_name, col_name, seq_name FROM seq_tab WHERE row_no = 1; ";
  EXPECT_EQ(seq.substr(seq.size() - tail.size()), tail);
  EXPECT_EQ(seq.size(), std::string("ExecuteQuery:").size() + 2119);

  EXPECT_EQ(Strings(statements.begin() + 2, statements.end()),
            (Strings{"ExecuteQuery:SELECT max(id) FROM s.a;",
                     "ExecuteQuery:SELECT setval('a_id_seq', 42, false);",
                     "ExecuteQuery:SELECT max(n) FROM s.a;",
                     "ExecuteQuery:SELECT setval('s.a_n_seq', 0, false);",
                     "ExecuteQuery:SELECT max(id) FROM s.b;",
                     "ExecuteQuery:SELECT setval('s.b_id_seq', 1, false);"}));
  const std::string done =
      "3|[vexel::CPGSystemInfo::SetMapSeqValue]SET SEQUENCE SUCCESS, SEQ_NAME: ";
  EXPECT_EQ(log.texts(),
            (Strings{done + "a_id_seq.[", done + "s.a_n_seq.[", done + "s.b_id_seq.["}));
}

TEST(SystemInfoTest, PgSequenceResetWithoutSequencesRunsNoSetval) {
  auto conn = vexel_test::fake(7);
  conn->QueueResult({{{"nspname", "only"}}});
  CDBSystemInfo info(conn);
  EXPECT_TRUE(info.SequenceReset());
  const Strings statements = conn->statements();
  ASSERT_EQ(statements.size(), 2u);
  EXPECT_NE(statements[1].find("nspname IN('only'))"), std::string::npos);
}

struct PgFailure {
  const char* failing_prefix;
  size_t statements_run;
  Strings log;  // after the SET SEQUENCE lines of the entries already set
};

TEST(SystemInfoTest, PgSequenceResetStopsAtTheFirstFailure) {
  const std::string set = "[vexel::CPGSystemInfo::SetMapSeqValue]";
  const std::string reset = "[vexel::CPGSystemInfo::SequenceReset]";
  const PgFailure cases[] = {
      {"SELECT nspname",
       1,
       {"5|" + reset + "ExecuteQuery failed errorcode:42.error_info:boom,sql:" +
        std::string(kPgUserSchemas).substr(13) + ".["}},
      {"SELECT max(n)",
       5,
       {"3|" + set + "SET SEQUENCE SUCCESS, SEQ_NAME: a_id_seq.[",
        "5|" + set +
            "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT max(n) FROM s.a;.[",
        "5|" + set + "SET SEQUENCE Failed, SEQ_NAME: s.a_n_seq.["}},
      {"SELECT setval('s.a_n_seq'",
       6,
       {"3|" + set + "SET SEQUENCE SUCCESS, SEQ_NAME: a_id_seq.[",
        "5|" + set +
            "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT setval('s.a_n_seq', 1, "
            "false);.[",
        "5|" + set + "SET SEQUENCE Failed, SEQ_NAME: s.a_n_seq.["}},
  };
  for (const PgFailure& c : cases) {
    SCOPED_TRACE(c.failing_prefix);
    auto conn = std::make_shared<FailingAt>(2, c.failing_prefix);
    queue_pg_catalogue(*conn, {"41", "0", "9"});
    CDBSystemInfo info(conn);
    CaptureLog log;
    EXPECT_FALSE(info.SequenceReset());
    EXPECT_EQ(conn->statements().size(), c.statements_run);
    EXPECT_EQ(log.texts(), c.log);
    EXPECT_EQ(conn->count("GetLastError"), 1);
  }
}

// ---- SQLite sequence reset ----------------------------------------------

const char* kLiteSequenceExists =
    "ExecuteQuery:SELECT name FROM sqlite_master WHERE name = 'sqlite_sequence' AND type = 'tab';";

void queue_lite_catalogue(FakeConnect& conn) {
  conn.QueueResult({{{"name", "sqlite_sequence"}}});
  conn.QueueResult({{{"name", "a"}}, {{"name", "b"}}});
  conn.QueueResult({{{"name", "x"}, {"pk", "0"}}, {{"name", "id"}, {"pk", "1"}}});  // PRAGMA a
  conn.QueueResult({{{"max(id)", "7"}}});
  conn.QueueResult({});                              // UPDATE a
  conn.QueueResult({{{"name", "k"}, {"pk", "1"}}});  // PRAGMA b
  conn.QueueResult({{{"max(k)", ""}}});              // no rows: NULL
  conn.QueueResult({});                              // UPDATE b
}

const Strings kLiteResetStatements = {
    kLiteSequenceExists,
    "ExecuteQuery:SELECT name FROM sqlite_sequence;",
    "ExecuteQuery:PRAGMA table_info(a)",
    "ExecuteQuery:SELECT max(id) FROM a;",
    "ExecuteUpdate:UPDATE sqlite_sequence SET seq = 7 WHERE name = 'a';",
    "ExecuteQuery:PRAGMA table_info(b)",
    "ExecuteQuery:SELECT max(k) FROM b;",
    "ExecuteUpdate:UPDATE sqlite_sequence SET seq = 0 WHERE name = 'b';",
};

TEST(SystemInfoTest, SqliteSequenceResetSetsEachTableToItsKeyMaximum) {
  auto conn = vexel_test::fake(1);
  queue_lite_catalogue(*conn);
  CDBSystemInfo info(conn);
  CaptureLog log;
  EXPECT_TRUE(info.SequenceReset());
  EXPECT_EQ(conn->statements(), kLiteResetStatements);
  EXPECT_TRUE(log.texts().empty());
}

TEST(SystemInfoTest, SqliteSequenceResetWithoutSequenceTable) {
  auto conn = vexel_test::fake(1);
  CDBSystemInfo info(conn);
  CaptureLog log;
  EXPECT_TRUE(info.SequenceReset());
  EXPECT_EQ(conn->statements(), (Strings{kLiteSequenceExists}));
  EXPECT_EQ(log.texts(),
            (Strings{"4|[vexel::CSQLiteSystemInfo::SequenceReset]No tab sqlite_sequence.["}));
}

TEST(SystemInfoTest, SqliteSequenceResetStopsAtTheFirstFailure) {
  const std::string site = "5|[vexel::CSQLiteSystemInfo::SequenceReset]";
  const struct {
    const char* failing_prefix;
    size_t statements_run;
    std::string line;
  } cases[] = {
      {"SELECT name FROM sqlite_master", 1,
       site + "ExecuteQuery failed errorcode:42.error_info:boom,sql:" +
           std::string(kLiteSequenceExists).substr(13) + ".["},
      {"PRAGMA table_info(b)", 6,
       site + "ExecuteQuery failed errorcode:42.error_info:boom,sql:PRAGMA table_info(b).["},
      {"UPDATE sqlite_sequence SET seq = 7", 5,
       site + "Execute failed errorcode:42.error_info:boom,sql:UPDATE sqlite_sequence SET seq = 7 "
              "WHERE name = 'a';.["},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.failing_prefix);
    auto conn = std::make_shared<FailingAt>(1, c.failing_prefix);
    queue_lite_catalogue(*conn);
    CDBSystemInfo info(conn);
    CaptureLog log;
    EXPECT_FALSE(info.SequenceReset());
    const Strings statements = conn->statements();
    EXPECT_EQ(statements, Strings(kLiteResetStatements.begin(),
                                  kLiteResetStatements.begin() + c.statements_run));
    EXPECT_EQ(log.texts(), (Strings{c.line}));
  }
}

}  // namespace
