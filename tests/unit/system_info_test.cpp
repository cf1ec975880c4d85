// The catalogue facade: which implementation a dialect gets, the catalogue
// texts it runs, the rows it reads back through the cursor, and the exact
// lines for unsupported operations, bad input and failed statements.
#include <gtest/gtest.h>

#include <regex>

#include "support/BuilderChecks.h"
#include "vexel/CDBSystemInfo.h"

namespace {

using vexel::CDBSystemInfo;
using vexel_test::CaptureLog;
using vexel_test::fake;
using vexel_test::FakeConnect;
using vexel_test::sent;
using vexel_test::Strings;

std::string unsupported(int code, const std::string& op) {
  return "5|[vexel::C" + vexel_test::impl(code, "SystemInfo::") + op + "]Not support SQLServer![";
}

struct Op {
  const char* name;
  bool (*run)(CDBSystemInfo&, Strings&);
  vexel_test::FakeResult rows;  // the query's result
  Strings before, after;        // the output as the call finds and leaves it
  vexel_test::PerDialect sql;   // "": the dialect has no form of it
};
Op op(const char* name, bool (*run)(CDBSystemInfo&, Strings&), vexel_test::FakeResult rows,
      Strings before, Strings after, vexel_test::PerDialect sql) {
  return {name, run, std::move(rows), std::move(before), std::move(after), std::move(sql)};
}

bool exists(CDBSystemInfo& info, Strings& flag) {
  bool exists = flag[0] == "1";
  const bool ok = info.IsExistsInDB("s", "t", exists);
  flag[0] = exists ? "1" : "0";
  return ok;
}
bool tables(CDBSystemInfo& info, Strings& out) { return info.GetAllTablesBySchema("s", out); }
bool children(CDBSystemInfo& i, Strings& o) { return i.GetAllChiledTableByParentTable("s.p", o); }
bool schemas(CDBSystemInfo& info, Strings& out) { return info.GetAllSchemaName(out); }

// Each operation succeeding, then with its query failing.
TEST(SystemInfo, OperationsPerDialect) {
  const vexel_test::FakeResult two = {
      {{"tablename", "a"}, {"name", "a"}, {"the_tablename", "a"}, {"nspname", "a"}},
      {{"tablename", "b"}, {"name", "b"}, {"the_tablename", "b"}, {"nspname", "b"}}};
  const std::string lite = "SELECT name FROM s.sqlite_master WHERE ";
  const std::string pg = "SELECT tablename FROM pg_catalog.pg_tables WHERE schemaname = 's'";
  const vexel_test::PerDialect exists_sql = {lite + "name = 't' AND type = 'tab';",
                                             pg + " AND tablename = 't';", "",
                                             pg + " AND tablename = 't';"};
  const Op ops[] = {
      op("IsExistsInDB", exists, {{{"tablename", "t"}, {"name", "t"}}}, {"0"}, {"1"}, exists_sql),
      op("IsExistsInDB", exists, {}, {"1"}, {"0"}, exists_sql),
      op("GetAllTablesBySchema", tables, two, {"kept"}, {"kept", "a", "b"},
         {lite + "type = 'tab';", pg + ";", "", pg + ";"}),
      op("GetAllChiledTableByParentTable", children, two, {}, {"a", "b"},
         vexel_test::pg_only(
             "select c.relname as the_tablename from pg_class c join pg_inherits i on i.inhrelid = "
             "c.oid join pg_class d on d.oid = i.inhparent JOIN pg_namespace pn ON pn.oid = "
             "d.relnamespace where pn.nspname = 's' AND d.relname = 'p';",
             "")),
      op("GetAllSchemaName", schemas, two, {}, {"a", "b"},
         vexel_test::pg_only("SELECT nspname FROM pg_namespace;", "")),
  };
  for (const Op& o : ops) {
    for (int code : vexel_test::kDialects) {
      for (bool fail : {false, true}) {
        SCOPED_TRACE(std::string(o.name) + " " + std::to_string(code) + (fail ? " failing" : ""));
        const std::string& sql = o.sql.at(code);
        auto conn = fake(code);
        conn->QueueResult(o.rows);
        if (fail) conn->FailOn("ExecuteQuery");
        CDBSystemInfo info(conn);
        CaptureLog log;
        Strings out = o.before;
        EXPECT_EQ(o.run(info, out), !fail && !sql.empty());
        EXPECT_EQ(out, fail || sql.empty() ? o.before : o.after);
        EXPECT_EQ(sent(*conn), sql.empty() ? Strings{} : Strings{"ExecuteQuery:" + sql});
        EXPECT_EQ(conn->count("GetLastError"), fail && !sql.empty() ? 1 : 0);
        Strings lines;
        if (sql == pg + ";")
          lines.push_back("2|[vexel::CPGSystemInfo::GetAllTablesBySchema]schema_name:s.[");
        if (sql.empty()) lines.push_back(unsupported(code, o.name));
        const std::string site = "C" + vexel_test::impl(code, "SystemInfo::") + o.name;
        if (fail && !sql.empty())
          lines.push_back(vexel_test::failed(site, "ExecuteQuery failed ", sql));
        EXPECT_EQ(log.texts(), lines);
      }
    }
  }
  // The parent of child tables is "schema.table" exactly.
  for (const std::string parent : {"a.b.c", "ab", "", ".b", "a.", "."}) {
    auto conn = fake(2);
    CDBSystemInfo info(conn);
    CaptureLog log;
    Strings out;
    EXPECT_FALSE(info.GetAllChiledTableByParentTable(parent, out) || !sent(*conn).empty());
    EXPECT_EQ(log.texts(), Strings{"5|[vexel::CPGSystemInfo::GetAllChiledTableByParentTable]"
                                   "parent_table_name[" +
                                   parent + "] error.["});
  }
}

// Each code's implementation is logged at construction; without a
// connection, or after a move, the facade has none and says so.
TEST(SystemInfo, FacadeLife) {
  for (int code : vexel_test::kDialects) {
    CaptureLog log;
    CDBSystemInfo info(fake(code));
    EXPECT_EQ(info.SequenceReset(), code != 3);  // nothing to reset; SQL Server has no form
    EXPECT_EQ(log.texts().front(),
              "3|[vexel::CDBSystemInfo::CDBSystemInfo]db_type:" + std::to_string(code) + ".[");
    EXPECT_EQ(log.texts().back() == unsupported(3, "SequenceReset"), code == 3);
  }
  CaptureLog log;
  CDBSystemInfo info(nullptr), original(fake(2)), moved(std::move(original));
  bool exists = true;
  Strings out;
  EXPECT_FALSE(info.IsExistsInDB("s", "t", exists) || info.SequenceReset() ||
               info.GetAllTablesBySchema("s", out) ||
               info.GetAllChiledTableByParentTable("s.t", out) || info.GetAllSchemaName(out) ||
               original.GetAllSchemaName(out));  // NOLINT
  EXPECT_TRUE(exists && out.empty() && moved.GetAllSchemaName(out));
  Strings want = {"6|[vexel::CDBSystemInfo::CDBSystemInfo]db_conn is nullptr.[",
                  "3|[vexel::CDBSystemInfo::CDBSystemInfo]db_type:2.["};
  for (std::string op :
       {"IsExistsInDB", "SequenceReset", "GetAllTablesBySchema", "GetAllChiledTableByParentTable",
        "GetAllSchemaName", "GetAllSchemaName"}) {
    want.push_back("5|[vexel::CDBSystemInfo::" + op + "]dbsystem_info_ptr_ is nullptr.[");
  }
  EXPECT_EQ(log.texts(), want);
}

// ---- Sequence reset -----------------------------------------------------

// Fails the n-th statement (from 1), whichever operation runs it.
class FailingAt : public FakeConnect {
 public:
  FailingAt(int code, size_t n) : FakeConnect(code), n_(n) {}
  bool ExecuteQuery(const std::string& sql) override {
    if (--n_ == 0) FailOn("ExecuteQuery");
    return FakeConnect::ExecuteQuery(sql);
  }
  bool ExecuteUpdate(const std::string& sql) override {
    if (--n_ == 0) FailOn("ExecuteUpdate");
    return FakeConnect::ExecuteUpdate(sql);
  }

 private:
  size_t n_;
};

// Schemas public and s, two sequence-backed columns listed out of order,
// then per column (by table, then column) its maximum and the setval result.
void queue_pg_catalogue(FakeConnect& conn) {
  conn.QueueResult({{{"nspname", "public"}}, {{"nspname", "s"}}});
  conn.QueueResult({{{"tab_name", "s.a"}, {"col_name", "n"}, {"seq_name", "s.a_n_seq"}},
                    {{"tab_name", "s.a"}, {"col_name", "id"}, {"seq_name", "a_id_seq"}}});
  for (const char* max : {"41", ""}) {
    conn.QueueResult({{{"max", max}}});
    conn.QueueResult({});
  }
}

// The sequence query, cut after its first words; checked in full below.
const Strings kPgReset = {
    "ExecuteQuery:SELECT nspname FROM pg_namespace WHERE nspname NOT ILIKE 'pg_%' AND nspname "
    "NOT ILIKE 'sql_%' AND nspname NOT ILIKE 'information_%';",
    "ExecuteQuery:WITH seq_tab AS",
    "ExecuteQuery:SELECT max(id) FROM s.a;",
    "ExecuteQuery:SELECT setval('a_id_seq', 42, false);",
    "ExecuteQuery:SELECT max(n) FROM s.a;",
    "ExecuteQuery:SELECT setval('s.a_n_seq', 0, false);"};

Strings sent_cut(const FakeConnect& conn) {
  Strings out = sent(conn);
  if (out.size() > 1 && out[1].rfind(kPgReset[1], 0) == 0) out[1] = kPgReset[1];
  return out;
}

// Table b's key column has no rows: its maximum reads as 0.
void queue_lite_catalogue(FakeConnect& conn) {
  conn.QueueResult({{{"name", "sqlite_sequence"}}});
  conn.QueueResult({{{"name", "a"}}, {{"name", "b"}}});
  conn.QueueResult({{{"name", "x"}, {"pk", "0"}}, {{"name", "id"}, {"pk", "1"}}});
  conn.QueueResult({{{"max(id)", "7"}}});
  conn.QueueResult({});
  conn.QueueResult({{{"name", "k"}, {"pk", "1"}}});
}

const Strings kLiteReset = {
    "ExecuteQuery:SELECT name FROM sqlite_master WHERE name = 'sqlite_sequence' AND type = 'tab';",
    "ExecuteQuery:SELECT name FROM sqlite_sequence;",
    "ExecuteQuery:PRAGMA table_info(a)",
    "ExecuteQuery:SELECT max(id) FROM a;",
    "ExecuteUpdate:UPDATE sqlite_sequence SET seq = 7 WHERE name = 'a';",
    "ExecuteQuery:PRAGMA table_info(b)",
    "ExecuteQuery:SELECT max(k) FROM b;",
    "ExecuteUpdate:UPDATE sqlite_sequence SET seq = 0 WHERE name = 'b';"};

TEST(SystemInfo, SequenceResetSetsEachSequencePastItsColumn) {
  auto pg = fake(2), lite = fake(1);
  queue_pg_catalogue(*pg);
  queue_lite_catalogue(*lite);
  CDBSystemInfo pg_info(pg), lite_info(lite);
  CaptureLog log;
  EXPECT_TRUE(pg_info.SequenceReset() && lite_info.SequenceReset());
  EXPECT_EQ(sent_cut(*pg), kPgReset);
  EXPECT_EQ(sent(*lite), kLiteReset);
  const std::string done =
      "3|[vexel::CPGSystemInfo::SetMapSeqValue]SET SEQUENCE SUCCESS, SEQ_NAME: ";
  EXPECT_EQ(log.texts(), (Strings{done + "a_id_seq.[", done + "s.a_n_seq.["}));
  // "%" fills the first slot, the quoted schema list the second. Hosts
  // recognise the query by its runs of blanks too: their count is checked.
  const std::string query = pg->calls_of("ExecuteQuery").at(1).sql;
  EXPECT_EQ(query.size(), 2119u);
  EXPECT_EQ(
      std::regex_replace(query, std::regex(" +"), " "),
      "WITH seq_tab AS (SELECT (t_4.nspname || '.' || t_2.relname) AS tab_name, t_3.attname "
      "AS col_name, SPLIT_PART(pg_get_expr(t_1.adbin, 'pg_catalog.pg_class'::regclass), '''', "
      "2) AS seq_name, ROW_NUMBER() OVER(PARTITION BY SPLIT_PART(pg_get_expr(t_1.adbin, "
      "'pg_catalog.pg_class'::regclass), '''', 2) ORDER BY t_2.relname ASC) AS row_no FROM "
      "pg_attrdef t_1 JOIN pg_class t_2 ON t_1.adrelid = t_2.oid JOIN pg_attribute t_3 ON "
      "t_3.attrelid = t_2.oid AND t_1.adnum = t_3.attnum JOIN pg_namespace t_4 ON t_4.oid = "
      "t_2.relnamespace WHERE pg_get_expr(t_1.adbin, 'pg_catalog.pg_class'::regclass) ILIKE "
      "'nextval%' AND t_2.relkind = 'r' AND t_2.relnamespace IN(SELECT oid FROM pg_namespace "
      "WHERE nspname IN('public' ,'s')) ORDER BY tab_name ASC) SELECT tab_name, col_name, "
      "seq_name FROM seq_tab WHERE row_no = 1; ");
}

// The first failing statement ends the reset, whichever it is; what was
// set stays set.
TEST(SystemInfo, SequenceResetStopsAtTheFirstFailure) {
  for (size_t n = 1; n <= kLiteReset.size(); ++n) {
    const std::string& last = kLiteReset[n - 1];
    auto conn = std::make_shared<FailingAt>(1, n);
    queue_lite_catalogue(*conn);
    CDBSystemInfo info(conn);
    CaptureLog log;
    EXPECT_FALSE(info.SequenceReset());
    EXPECT_EQ(sent(*conn), Strings(kLiteReset.begin(), kLiteReset.begin() + n));
    const char* head = last[7] == 'U' ? "Execute failed " : "ExecuteQuery failed ";
    EXPECT_EQ(log.texts(), Strings{vexel_test::failed("CSQLiteSystemInfo::SequenceReset", head,
                                                      last.substr(last.find(':') + 1))});
  }
  // PostgreSQL: the schema list, or a column's maximum.
  auto schemas = std::make_shared<FailingAt>(2, 1), max = std::make_shared<FailingAt>(2, 5);
  queue_pg_catalogue(*max);
  CDBSystemInfo schemas_info(schemas), max_info(max);
  CaptureLog log;
  EXPECT_FALSE(schemas_info.SequenceReset() || max_info.SequenceReset());
  EXPECT_EQ(sent(*schemas).size(), 1u);
  EXPECT_EQ(sent_cut(*max), Strings(kPgReset.begin(), kPgReset.begin() + 5));
  const std::string set = "CPGSystemInfo::SetMapSeqValue";
  EXPECT_EQ(log.texts(),
            (Strings{vexel_test::failed("CPGSystemInfo::SequenceReset", "ExecuteQuery failed ",
                                        kPgReset[0].substr(13)),
                     "3|[vexel::" + set + "]SET SEQUENCE SUCCESS, SEQ_NAME: a_id_seq.[",
                     vexel_test::failed(set, "ExecuteQuery failed ", kPgReset[4].substr(13)),
                     "5|[vexel::" + set + "]SET SEQUENCE Failed, SEQ_NAME: s.a_n_seq.["}));
}

}  // namespace
