// Failure paths on real engines: invalid SQL, statements past their
// time-out, and (PostgreSQL) a server that went away.
#include <chrono>
#include <climits>

#include "Engines.h"
#include "support/CaptureLog.h"

namespace vexel_it {
namespace {

using Clock = std::chrono::steady_clock;
using vexel::QueryBuilder;
using vexel::SQLExpr;

constexpr int kSqliteError = 1;      // SQLITE_ERROR
constexpr int kSqliteInterrupt = 9;  // SQLITE_INTERRUPT

double seconds_since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

class FailureTest : public EngineTest {
 protected:
  // A statement that runs far longer than any time-out used here.
  std::string SlowSelect() const {
    return is_sqlite() ? "(WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) "
                         "SELECT count(*) FROM c) AS n"
                       : "pg_sleep(30) AS n";
  }
};

TEST_P(FailureTest, InvalidSqlLogsEngineCodeAndMessage) {
  vexel_test::CaptureLog log;
  QueryBuilder q(conn_);
  q.SELECT({vexel::col("x")}).FROM(vexel::tab("no_such_table"));
  EXPECT_FALSE(q.Execute());
  EXPECT_TRUE(conn_->IsEOF());
  const std::string expected =
      is_sqlite()
          ? "5|[vexel::SQLiteQuery::Execute]ExecuteQuery failed errorcode:" +
                std::to_string(kSqliteError) +
                ".error_info:no such table: no_such_table,sql:SELECT x FROM no_such_table;.["
          : "5|[vexel::PGQuery::Execute]ExecuteQuery failed errorcode:" +
                std::to_string(tessel::PGConnect::ErrorCode("42P01")) +
                ".error_info:42P01: relation \"no_such_table\" does not exist,sql:SELECT x FROM "
                "no_such_table;.[";
  EXPECT_EQ(log.texts(), std::vector<std::string>{expected});

  // The connection keeps working after a failure.
  EXPECT_EQ(Query("SELECT count(*) AS n FROM " + schema_ + ".items", {"n"}), (Rows{{"5"}}));
}

TEST_P(FailureTest, SyntaxErrorThroughEveryExecuteOperation) {
  const std::string bad = "SELEC nothing";
  tessel::CConnect& c = *raw_;
  EXPECT_FALSE(c.ExecuteUpdate(bad));
  EXPECT_FALSE(c.ExecuteQuery(bad));
  EXPECT_FALSE(c.ExecuteQueryUDT(bad, 5));
  EXPECT_FALSE(c.ExecuteSortByCollate(bad, "C"));
  EXPECT_FALSE(c.ExecuteLoop(bad));
  EXPECT_FALSE(c.ExecuteQueryContainView(bad));
  EXPECT_FALSE(c.ExecuteReturning(bad));
  EXPECT_FALSE(c.SeqenceExecute(bad));
  EXPECT_FALSE(c.SeqenceExecuteManual(bad));
  std::string info;
  const int code = c.GetLastQueryError(info);
  EXPECT_EQ(code, is_sqlite() ? kSqliteError : tessel::PGConnect::ErrorCode("42601"));
  EXPECT_NE(info.find("syntax error"), std::string::npos) << info;
  // No transaction of the connection's own is left open.
  EXPECT_EQ(Query("SELECT 1 AS one", {"one"}), (Rows{{"1"}}));
}

TEST_P(FailureTest, TimeOutStopsStatementDirectly) {
  const auto start = Clock::now();
  EXPECT_FALSE(raw_->ExecuteQueryUDT("SELECT " + SlowSelect(), 1));
  EXPECT_LT(seconds_since(start), 10.0);
  std::string info;
  const int code = raw_->GetLastError(info);
  if (is_sqlite()) {
    EXPECT_EQ(code, kSqliteInterrupt);
    EXPECT_NE(info.find("time-out of 1 s"), std::string::npos) << info;
  } else {
    EXPECT_EQ(code, tessel::PGConnect::ErrorCode("57014"));
    EXPECT_NE(info.find("statement timeout"), std::string::npos) << info;
  }
  // A statement within its time-out runs, and the limit does not outlive it.
  ASSERT_TRUE(raw_->ExecuteQueryUDT("SELECT 2 AS two", 1)) << LastError();
  EXPECT_EQ(ReadRows(*raw_, {"two"}), (Rows{{"2"}}));
  // The largest limit neither overflows the deadline nor the server's
  // setting (milliseconds there).
  ASSERT_TRUE(raw_->ExecuteQueryUDT("SELECT 3 AS three", INT_MAX)) << LastError();
  EXPECT_EQ(ReadRows(*raw_, {"three"}), (Rows{{"3"}}));
  if (pg_) {
    EXPECT_EQ(Query("SHOW statement_timeout", {"statement_timeout"}), (Rows{{"0"}}));
  }
}

TEST_P(FailureTest, TimeOutStopsStatementThroughBuilder) {
  // SQLite's time-out form reaches the connection as a plain query, so the
  // limit is the connection's own.
  if (sqlite_) sqlite_->SetStatementTimeOut(1);
  vexel_test::CaptureLog log;
  QueryBuilder q(conn_);
  q.SELECT(SQLExpr(SlowSelect()));
  const auto start = Clock::now();
  EXPECT_FALSE(q.ExecuteQueryUDT(1));
  EXPECT_LT(seconds_since(start), 10.0);
  ASSERT_EQ(log.lines().size(), 1u);
  const std::string code =
      std::to_string(is_sqlite() ? kSqliteInterrupt : tessel::PGConnect::ErrorCode("57014"));
  const std::string prefix =
      std::string("5|[vexel::") + (is_sqlite() ? "SQLiteQuery" : "PGQuery") +
      "::ExecuteQueryUDT]ExecuteQueryUDT failed,time_out:1, errorcode:" + code + ".error_info:";
  EXPECT_EQ(log.texts()[0].substr(0, prefix.size()), prefix);
}

TEST_P(FailureTest, BadRegexpPatternIsAnSqlError) {
  // The same pattern is an error on both engines: no crash, a false.
  const std::string sql =
      is_sqlite() ? "SELECT regexp('abc', '(', 0) AS m" : "SELECT 'abc' ~* '(' AS m";
  EXPECT_FALSE(raw_->ExecuteQuery(sql));
  EXPECT_NE(LastError().find(is_sqlite() ? "regexp: invalid pattern" : "regular expression"),
            std::string::npos)
      << LastError();
}

INSTANTIATE_TEST_SUITE_P(Engines, FailureTest, testing::Values(Engine::kSqlite, Engine::kPostgres),
                         EngineName);

TEST(SqliteConnection, UnopenableFileFailsEveryOperation) {
  tessel::SQLiteConnect c("/nonexistent-dir/vexel.db");
  EXPECT_FALSE(c.IsOpen());
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(c.ExecuteQuery("SELECT 1"));
    EXPECT_FALSE(c.ExecuteQueryUDT("SELECT 1", 1));
    EXPECT_TRUE(c.IsEOF());
    std::string info;
    EXPECT_EQ(c.GetLastError(info), 14);  // SQLITE_CANTOPEN
    EXPECT_EQ(info.rfind("database is not open: cannot open database", 0), 0u) << info;
  }
}

class PostgresConnection : public testing::Test {
 protected:
  void SetUp() override {
    conninfo_ = PgConnInfo();
    if (conninfo_.empty()) GTEST_SKIP() << "no PostgreSQL server (VEXEL_PG_CONNINFO unset)";
  }
  std::string conninfo_;
};

std::string last_error(tessel::CConnect& c) {
  std::string info;
  const int code = c.GetLastError(info);
  return std::to_string(code) + "|" + info;
}

TEST_F(PostgresConnection, TerminatedBackendFailsWithoutCrash) {
  auto admin = std::make_shared<tessel::PGConnect>(conninfo_);
  auto victim = std::make_shared<tessel::PGConnect>(conninfo_);
  ASSERT_TRUE(admin->IsOpen());
  ASSERT_TRUE(victim->ExecuteQuery("SELECT pg_backend_pid() AS pid"));
  const std::string pid = victim->GetFieldString("pid");
  ASSERT_TRUE(admin->ExecuteQuery("SELECT pg_terminate_backend(" + pid + ") AS done"));
  EXPECT_EQ(admin->GetFieldString("done"), "t");

  vexel_test::CaptureLog log;
  QueryBuilder q(victim);
  q.SELECT(SQLExpr("1 AS one"));
  EXPECT_FALSE(q.Execute());
  EXPECT_FALSE(q.ExecuteLoop());
  EXPECT_FALSE(q.ExecuteQueryUDT(5));
  EXPECT_FALSE(q.ExecuteSortByCollate("C"));
  EXPECT_EQ(log.lines().size(), 4u);
  for (const auto& line : log.lines()) {
    EXPECT_EQ(line.text.find_first_of("\n\t"), std::string::npos) << line.text;
  }
  tessel::CConnect& c = *victim;
  EXPECT_FALSE(c.ExecuteUpdate("SELECT 1"));
  EXPECT_FALSE(c.ExecuteQuery("SELECT 1"));
  EXPECT_FALSE(c.ExecuteQueryUDT("SELECT 1", 5));
  EXPECT_FALSE(c.ExecuteSortByCollate("SELECT 1", "C"));
  EXPECT_FALSE(c.ExecuteLoop("SELECT 1"));
  EXPECT_FALSE(c.ExecuteQueryContainView("SELECT 1"));
  EXPECT_FALSE(c.ExecuteReturning("SELECT 1"));
  EXPECT_FALSE(c.SeqenceExecute("SELECT 1"));
  EXPECT_FALSE(c.SeqenceExecuteManual("SELECT 1"));
  EXPECT_EQ(c.GetFieldInt(0), 0);
  EXPECT_FALSE(c.MoveNext());
  EXPECT_EQ(last_error(c).find_first_of("\n\t"), std::string::npos) << last_error(c);
  EXPECT_FALSE(victim->IsOpen());
  EXPECT_TRUE(victim->IsEOF());
  EXPECT_EQ(victim->GetFieldString("one"), "");

  // The connection can be made again.
  ASSERT_TRUE(victim->Reconnect()) << last_error(*victim);
  EXPECT_TRUE(q.Execute()) << last_error(*victim);
  EXPECT_EQ(victim->GetFieldInt("one"), 1);
}

TEST_F(PostgresConnection, DeadSocketFailsEveryOperation) {
  tessel::PGConnect dead("host=/nonexistent/vexel-socket dbname=nothing connect_timeout=2");
  EXPECT_FALSE(dead.IsOpen());
  EXPECT_FALSE(dead.ExecuteQuery("SELECT 1"));
  EXPECT_FALSE(dead.ExecuteUpdate("SELECT 1"));
  EXPECT_FALSE(dead.ExecuteQueryUDT("SELECT 1", 1));
  EXPECT_FALSE(dead.ExecuteLoop("SELECT 1"));
  EXPECT_FALSE(dead.ExecuteSortByCollate("SELECT 1", "C"));
  EXPECT_TRUE(dead.IsEOF());
  std::string info;
  EXPECT_EQ(dead.GetLastError(info), tessel::PGConnect::ErrorCode("08006"));
  EXPECT_NE(info.find("no connection to the server"), std::string::npos) << info;
  EXPECT_FALSE(dead.Reconnect());
}

TEST_F(PostgresConnection, TimeOutInsideOpenTransactionRestoresSetting) {
  tessel::PGConnect c(conninfo_);
  ASSERT_TRUE(c.ExecuteUpdate("BEGIN; SET LOCAL statement_timeout = '7s'"));
  ASSERT_TRUE(c.ExecuteQueryUDT("SELECT 1 AS one", 2)) << last_error(c);
  ASSERT_TRUE(c.ExecuteQuery("SHOW statement_timeout"));
  EXPECT_EQ(c.GetFieldString("statement_timeout"), "7s");
  // A stop inside the caller's transaction aborts it, as any error would.
  EXPECT_FALSE(c.ExecuteQueryUDT("SELECT pg_sleep(30)", 1));
  ASSERT_TRUE(c.ExecuteUpdate("ROLLBACK"));
  ASSERT_TRUE(c.ExecuteQuery("SHOW statement_timeout"));
  EXPECT_EQ(c.GetFieldString("statement_timeout"), "0");
}

// True when the connection has no transaction open: in one, now() stays at
// the transaction's start while each statement gets its own time stamp.
bool idle(tessel::CConnect& c) {
  return c.ExecuteQuery("SELECT now() = statement_timestamp() AS idle") &&
         c.GetFieldString("idle") == "t";
}

TEST_F(PostgresConnection, FailedLoopLeavesNoTransactionOrCursor) {
  tessel::PGConnect c(conninfo_);
  ASSERT_TRUE(c.ExecuteUpdate("CREATE TEMP TABLE looped (a int)"));
  const char* const failing[] = {
      "INSERT INTO looped VALUES (1)",  // not a query: no cursor for it
      "SELEC 1",
      "SELECT 1; COMMIT",  // ends the loop's own transaction under it
      "SELECT 1 / 0",      // fails at the first fetch
  };
  for (const char* sql : failing) {
    SCOPED_TRACE(sql);
    EXPECT_FALSE(c.ExecuteLoop(sql));
    EXPECT_TRUE(c.IsEOF());
    EXPECT_TRUE(idle(c));
    // The cursor's name is free again, outside and inside a transaction.
    ASSERT_TRUE(c.ExecuteLoop("SELECT 2 AS v")) << last_error(c);
    EXPECT_EQ(c.GetFieldInt("v"), 2);
    ASSERT_TRUE(c.ExecuteUpdate("BEGIN"));
    ASSERT_TRUE(c.ExecuteLoop("SELECT 3 AS v")) << last_error(c);
    ASSERT_TRUE(c.ExecuteLoop("SELECT 4 AS v")) << last_error(c);
    EXPECT_EQ(c.GetFieldInt("v"), 4);
    ASSERT_TRUE(c.ExecuteUpdate("COMMIT"));
  }
  ASSERT_TRUE(c.ExecuteQuery("SELECT count(*) AS n FROM looped"));
  EXPECT_EQ(c.GetFieldInt("n"), 0);
}

TEST_F(PostgresConnection, TimeOutSettingRestoredOnEveryPath) {
  tessel::PGConnect c(conninfo_);
  ASSERT_TRUE(c.ExecuteUpdate("SET statement_timeout = '20s'"));
  struct Case {
    const char* sql;
    bool ok;
  };
  const Case cases[] = {
      {"SELECT 1 AS v", true},
      {"SELEC 1", false},
      {"SELECT pg_sleep(10)", false},  // stopped by the 1 s limit
  };
  auto show = [&c]() {
    return c.ExecuteQuery("SHOW statement_timeout") ? c.GetFieldString("statement_timeout")
                                                    : "(failed)";
  };
  for (const Case& t : cases) {
    SCOPED_TRACE(t.sql);
    // The connection's own transaction.
    EXPECT_EQ(c.ExecuteQueryUDT(t.sql, 1), t.ok) << last_error(c);
    EXPECT_TRUE(idle(c));
    EXPECT_EQ(show(), "20s");
    // The caller's transaction: a failure aborts it, as any error would.
    ASSERT_TRUE(c.ExecuteUpdate("BEGIN; SET LOCAL statement_timeout = '7s'"));
    EXPECT_EQ(c.ExecuteQueryUDT(t.sql, 1), t.ok) << last_error(c);
    EXPECT_EQ(show(), t.ok ? "7s" : "(failed)");
    ASSERT_TRUE(c.ExecuteUpdate("ROLLBACK"));
    EXPECT_EQ(show(), "20s");
  }
}

TEST_F(PostgresConnection, FailedCommitAfterTimeOutQueryLeavesNoRows) {
  tessel::PGConnect c(conninfo_);
  ASSERT_TRUE(c.ExecuteUpdate(
      "CREATE TEMP TABLE parent (id int PRIMARY KEY); CREATE TEMP TABLE child (id int, "
      "parent_id int REFERENCES parent DEFERRABLE INITIALLY DEFERRED)"));
  // The statement succeeds; the deferred check fails at COMMIT.
  EXPECT_FALSE(c.ExecuteQueryUDT("INSERT INTO child VALUES (1, 99) RETURNING id", 5));
  EXPECT_TRUE(c.IsEOF());
  EXPECT_EQ(c.GetFieldString("id"), "");
  std::string info;
  EXPECT_EQ(c.GetLastError(info), tessel::PGConnect::ErrorCode("23503")) << info;
  EXPECT_TRUE(idle(c));
}

TEST_F(PostgresConnection, NulByteInCollationNameFails) {
  tessel::PGConnect c(conninfo_);
  EXPECT_FALSE(c.ExecuteSortByCollate("SELECT 1", std::string("C\0x", 3)));
  std::string info;
  EXPECT_EQ(c.GetLastError(info), tessel::PGConnect::ErrorCode("42704"));
}

TEST_F(PostgresConnection, CopyThroughStdioFailsAndConnectionStaysUsable) {
  tessel::PGConnect c(conninfo_);
  ASSERT_TRUE(c.ExecuteUpdate("CREATE TEMP TABLE copied (a int)"));
  for (const char* sql : {"COPY (SELECT 1) TO STDOUT", "COPY copied FROM STDIN"}) {
    SCOPED_TRACE(sql);
    EXPECT_FALSE(c.ExecuteUpdate(sql));
    std::string info;
    EXPECT_EQ(c.GetLastError(info), tessel::PGConnect::ErrorCode("0A000"));
    ASSERT_TRUE(c.ExecuteQuery("SELECT count(*) AS n FROM copied")) << last_error(c);
    EXPECT_EQ(c.GetFieldInt("n"), 0);
  }
}

TEST_F(PostgresConnection, UnknownCollationFails) {
  tessel::PGConnect c(conninfo_);
  EXPECT_FALSE(c.ExecuteSortByCollate("SELECT 1", "no_such_collation"));
  std::string info;
  EXPECT_EQ(c.GetLastError(info), tessel::PGConnect::ErrorCode("42704"));
  EXPECT_EQ(info, "42704: collation \"no_such_collation\" does not exist");
  EXPECT_TRUE(c.ExecuteSortByCollate("SELECT 'b' AS s UNION ALL SELECT 'a' ORDER BY 1", "C"));
  EXPECT_EQ(c.GetFieldString("s"), "a");
}

}  // namespace
}  // namespace vexel_it
