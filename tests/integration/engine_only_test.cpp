// What only the engines show: errors and the one log line each gives, NUL
// bytes, integers, time-outs, cursors and a server that went away; the SQL
// functions SQLiteConnect registers, against PostgreSQL's own operators; and
// the default log sink.
#include <chrono>
#include <climits>

#include "Engines.h"
#include "olk/Log.h"
#include "olk/LogSink.h"

namespace vexel_it {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using vexel::QueryBuilder;

// "code|SQLSTATE: " as PGConnect reports a server error.
std::string Pg(const char* sqlstate) {
  return std::to_string(tessel::PGConnect::ErrorCode(sqlstate)) + "|" + sqlstate + ": ";
}

using ConnectionTest = EngineTest;

TEST_P(ConnectionTest, RefusedStatementsLogOneLineAndTheConnectionGoesOn) {
  EXPECT_FALSE(QueryBuilder(db_).SELECT({vexel::col("x")}).FROM(vexel::tab("no_table")).Execute());
  const std::string error = lite() ? "1.error_info:no such table: no_table"
                                   : std::to_string(tessel::PGConnect::ErrorCode("42P01")) +
                                         ".error_info:42P01: relation \"no_table\" does not exist";
  EXPECT_EQ(log_.texts(), Row{"5|[vexel::" + std::string(lite() ? "SQLite" : "PG") +
                              "Query::Execute]ExecuteQuery failed errorcode:" + error +
                              ",sql:SELECT x FROM no_table;.["});
  const std::string syntax =
      lite() ? "1|near \"SELEC\": syntax error" : Pg("42601") + "syntax error at or near \"SELEC\"";
  // A failure leaves no rows of an earlier statement.
  ASSERT_TRUE(db_->ExecuteQuery("SELECT 1 AS one"));
  EXPECT_FALSE(db_->ExecuteSortByCollate("SELEC 1", "C"));
  EXPECT_TRUE(db_->IsEOF());
  EXPECT_EQ(ErrorOf(*db_), syntax);
  // SQLite runs the statements of a text one by one up to the failing one;
  // PostgreSQL runs none of a text that does not parse. No transaction is
  // left open, and a later success keeps the failure's text.
  EXPECT_FALSE(db_->ExecuteUpdate(
      In("INSERT INTO $.items VALUES (6, 'f', 'x', 4); SELECT 1 AS n; SELEC 1")));
  EXPECT_EQ(Query("UPDATE $.items SET price = 0; SELECT count(*) AS n FROM $.items"),
            R(lite() ? "6" : "5"));
  EXPECT_EQ(ErrorOf(*db_), syntax);
  // A NUL byte is refused, not taken as the end of the text.
  const std::string sql("SELECT 1 AS v\0; DELETE FROM x", 29);
  for (int op = 0; op < 3; ++op) {
    EXPECT_FALSE(op == 0   ? db_->ExecuteQuery(sql)
                 : op == 1 ? db_->ExecuteLoop(sql)
                           : db_->ExecuteQueryUDT(sql, 5));
    EXPECT_EQ(ErrorOf(*db_),
              (lite() ? "1|" : Pg("22021")) + "the SQL text contains a NUL byte at offset 13");
  }
}

TEST_P(ConnectionTest, IntegersTakeTheLeadingNumberClampedToInt) {
  ASSERT_TRUE(
      db_->ExecuteQuery("SELECT '2147483648' AS a, '-2147483649' AS b, '-99999999999999999999' AS "
                        "c, '12abc' AS d, ' 7' AS e, 'abc' AS f, NULL AS g, '-3.9' AS h"));
  const int expected[] = {INT_MAX, INT_MIN, INT_MIN, 12, 7, 0, 0, -3, 0};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(db_->GetFieldInt(i), expected[i]) << i;
  EXPECT_EQ(db_->GetFieldInt("A"), INT_MAX);  // names match without regard to case
}

TEST_P(ConnectionTest, TimeOutStopsTheStatementAndDoesNotOutliveIt) {
  const std::string slow = lite() ? "(WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM "
                                    "c) SELECT count(*) FROM c)"
                                  : "pg_sleep(30)";
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(db_->ExecuteQueryUDT("SELECT " + slow, 1));
  EXPECT_EQ(ErrorOf(*db_), lite() ? "9|statement stopped after its time-out of 1 s (interrupted)"
                                  : Pg("57014") + "canceling statement due to statement timeout");
  // The largest limit overflows neither the deadline nor the server's setting.
  ASSERT_TRUE(db_->ExecuteQueryUDT("SELECT 2 AS two", INT_MAX) && db_->GetFieldInt(0) == 2)
      << ErrorOf(*db_);
  // Through a builder SQLite runs a plain query: the limit is the connection's own.
  if (lite()) std::static_pointer_cast<tessel::SQLiteConnect>(db_)->SetStatementTimeOut(1);
  EXPECT_FALSE(QueryBuilder(db_).SELECT(vexel::SQLExpr(slow)).ExecuteQueryUDT(1));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_THAT(log_.texts(), testing::ElementsAre(
                                HasSubstr("::ExecuteQueryUDT]ExecuteQueryUDT failed,time_out:1,")));
}

TEST(SqliteConnection, UnopenableFileFailsEveryOperation) {
  tessel::SQLiteConnect c("/no/dir/x.db");
  EXPECT_FALSE(c.IsOpen() || c.ExecuteQuery("SELECT 1") || c.ExecuteQueryUDT("SELECT 1", 1));
  EXPECT_EQ(ErrorOf(c),
            "14|database is not open: cannot open database \"/no/dir/x.db\": unable to open "
            "database file");
}

// True when no transaction is open: inside one, now() stays at its start
// while each statement gets its own time stamp.
bool Idle(tessel::CConnect& c) {
  return c.ExecuteQuery("SELECT now() = statement_timestamp() AS idle") &&
         c.GetFieldString("idle") == "t";
}

std::string Show(tessel::CConnect& c) {
  return c.ExecuteQuery("SHOW statement_timeout") ? c.GetFieldString("statement_timeout")
                                                  : "(failed)";
}

using PostgresConnection = PostgresTest;

TEST_F(PostgresConnection, LostServerFailsOnOneLineAndReconnects) {
  tessel::PGConnect admin(conninfo_);
  auto victim = std::make_shared<tessel::PGConnect>(conninfo_);
  ASSERT_TRUE(victim->ExecuteQuery("SELECT pg_backend_pid() AS pid"));
  ASSERT_TRUE(
      admin.ExecuteQuery("SELECT pg_terminate_backend(" + victim->GetFieldString("pid") + ")"));
  vexel_test::CaptureLog log;
  QueryBuilder q(victim);
  q.SELECT(vexel::SQLExpr("1 AS one"));
  EXPECT_FALSE(q.Execute() || q.ExecuteLoop() || q.ExecuteQueryUDT(5) ||
               q.ExecuteSortByCollate("C"));
  // libpq's own text spans lines; the log line must not.
  ASSERT_EQ(log.texts().size(), 4u);
  EXPECT_THAT(log.texts()[0],
              HasSubstr("08006: server closed the connection unexpectedly This probably"));
  EXPECT_THAT(log.texts()[3],
              HasSubstr("08006: no connection to the server: FATAL:  terminating connection due to "
                        "administrator command server closed the connection unexpectedly"));
  ASSERT_TRUE(victim->Reconnect() && q.Execute()) << ErrorOf(*victim);
  EXPECT_EQ(ReadAll(*victim), R("1"));
}

// The time-out is set for one statement only, in the connection's own
// transaction or the caller's; a failure aborts the caller's, as any error.
TEST_F(PostgresConnection, TimeOutSettingRestoredOnEveryPath) {
  tessel::PGConnect c(conninfo_);
  ASSERT_TRUE(c.ExecuteUpdate("SET statement_timeout = '20s'"));
  for (const char* sql : {"SELECT 1 AS v", "SELEC 1", "SELECT pg_sleep(10)"}) {
    SCOPED_TRACE(sql);
    const bool ok = std::string(sql) == "SELECT 1 AS v";
    EXPECT_EQ(c.ExecuteQueryUDT(sql, 1), ok) << ErrorOf(c);
    EXPECT_EQ(ReadAll(c), R(ok ? "1" : ""));
    EXPECT_TRUE(Idle(c));
    EXPECT_EQ(Show(c), "20s");
    ASSERT_TRUE(c.ExecuteUpdate("BEGIN; SET LOCAL statement_timeout = '7s'"));
    EXPECT_EQ(c.ExecuteQueryUDT(sql, 1), ok) << ErrorOf(c);
    EXPECT_EQ(ReadAll(c), R(ok ? "1" : ""));
    EXPECT_EQ(Show(c), ok ? "7s" : "(failed)");
    ASSERT_TRUE(c.ExecuteUpdate("ROLLBACK"));
    EXPECT_EQ(Show(c), "20s");
  }
  // The statement succeeds; the deferred check fails at COMMIT, which undoes the rows.
  ASSERT_TRUE(
      c.ExecuteUpdate("CREATE TEMP TABLE parent (id int PRIMARY KEY); CREATE TEMP TABLE child (p "
                      "int REFERENCES parent DEFERRABLE INITIALLY DEFERRED)"));
  EXPECT_FALSE(c.ExecuteQueryUDT("INSERT INTO child VALUES (99) RETURNING p", 5));
  EXPECT_TRUE(c.IsEOF() && Idle(c));
  EXPECT_THAT(ErrorOf(c), StartsWith(Pg("23503") + "insert or update on table \"child\""));
}

TEST_F(PostgresConnection, FailedLoopLeavesNoTransactionOrCursor) {
  tessel::PGConnect c(conninfo_);
  c.SetLoopBatchSize(0);  // taken as 1
  ASSERT_TRUE(c.ExecuteLoop("SELECT * FROM generate_series(1, 3) AS v;\n"));
  EXPECT_EQ(ReadAll(c), R("1; 2; 3"));
  ASSERT_TRUE(c.ExecuteUpdate("CREATE TEMP TABLE looped (a int)"));
  // Not a query; a syntax error; a text ending the loop's own transaction
  // under it; an error at the first fetch.
  for (const char* sql :
       {"INSERT INTO looped VALUES (1)", "SELEC 1", "SELECT 1; COMMIT", "SELECT 1 / 0"}) {
    EXPECT_FALSE(c.ExecuteLoop(sql)) << sql;
    EXPECT_TRUE(c.IsEOF() && Idle(c)) << sql;
    // The cursor's name is free again, outside and inside a transaction.
    ASSERT_TRUE(c.ExecuteLoop("SELECT 2 AS v") && c.ExecuteUpdate("BEGIN")) << ErrorOf(c);
    ASSERT_TRUE(c.ExecuteLoop("SELECT 3 AS v") && c.ExecuteLoop("SELECT 4 AS v")) << ErrorOf(c);
    EXPECT_EQ(ReadAll(c), R("4"));
    ASSERT_TRUE(c.ExecuteUpdate("COMMIT"));
  }
  EXPECT_TRUE(c.ExecuteQuery("SELECT count(*) FROM looped") && c.GetFieldInt(0) == 0);
}

TEST_F(PostgresConnection, CollationIsLookedUpAndCopyIsRefused) {
  tessel::PGConnect c(conninfo_);
  EXPECT_TRUE(c.ExecuteSortByCollate("SELECT 'b' AS s UNION ALL SELECT 'a' ORDER BY 1", "C"));
  EXPECT_EQ(ReadAll(c), R("a; b"));
  EXPECT_FALSE(c.ExecuteSortByCollate("SELECT 1", "no_such_collation"));
  EXPECT_EQ(ErrorOf(c), Pg("42704") + "collation \"no_such_collation\" does not exist");
  EXPECT_FALSE(c.ExecuteSortByCollate("SELECT 1", std::string("C\0x", 3)));
  EXPECT_EQ(ErrorOf(c), Pg("42704") + "collation name contains a NUL byte");
  // In an aborted transaction the look-up itself fails, with the server's reason.
  ASSERT_TRUE(c.ExecuteUpdate("BEGIN") && !c.ExecuteUpdate("SELEC 1"));
  EXPECT_FALSE(c.ExecuteSortByCollate("SELECT 1", "C"));
  EXPECT_THAT(ErrorOf(c), StartsWith(Pg("25P02") + "current transaction is aborted"));
  ASSERT_TRUE(c.ExecuteUpdate("ROLLBACK; CREATE TEMP TABLE copied (a int)"));
  for (const char* sql : {"COPY (SELECT 1) TO STDOUT", "COPY copied FROM STDIN"}) {
    EXPECT_FALSE(c.ExecuteUpdate(sql));
    EXPECT_EQ(ErrorOf(c), Pg("0A000") + "COPY FROM STDIN / TO STDOUT is not supported");
    EXPECT_TRUE(c.ExecuteQuery("SELECT count(*) FROM copied") && c.GetFieldInt(0) == 0) << sql;
  }
}

// The forms on both engines for each row of arguments (A, B, N in a form):
// the same rows, or both fail.
void CrossCheck(const Row& lite_forms, const Row& pg_forms, const std::string& args) {
  tessel::SQLiteConnect lite(":memory:");
  tessel::PGConnect pg(PgConnInfo());
  auto select = [](const Row& forms, const Row& x) {
    std::string sql = "SELECT ";
    for (size_t i = 0; i < forms.size(); ++i) {
      for (char c : forms[i])
        sql += c == 'A' ? x[0] : c == 'B' ? x[1] : c == 'N' ? x.back() : std::string(1, c);
      sql += " AS c" + std::to_string(i) + (i + 1 < forms.size() ? ", " : "");
    }
    return sql;
  };
  for (const Row& x : R(args, ',')) {
    const bool ok = lite.ExecuteQuery(select(lite_forms, x));
    EXPECT_EQ(pg.ExecuteQuery(select(pg_forms, x)), ok) << ErrorOf(lite) << "\n" << ErrorOf(pg);
    EXPECT_EQ(ok ? ReadAll(lite) : Rows(), ok ? ReadAll(pg) : Rows()) << x[0] << " " << x[1];
  }
}

// regexp(text, pattern, mode) against ~*, ~, !~* and !~.
TEST_F(PostgresTest, RegexpModesMatchPostgresOperators) {
  CrossCheck({"regexp(A, B, 0)", "regexp(A, B, 1)", "regexp(A, B, 2)", "regexp(A, B, 3)"},
             {"(A ~* B)::int", "(A ~ B)::int", "(A !~* B)::int", "(A !~ B)::int"},
             "'Apple pie','^apple'; 'apple pie','PIE$'; 'banana','an(an)+a'; 'COLOR','colou?r'; "
             "'item 42','[0-9]+$'; 'item','[0-9]'; 'line1\nline2','1.line'; 'École','école'; "
             "'ÉCOLE','^éc'; '','^$'; 'a.b','a\\.b'; 'axb','a\\.b'; 'x','(a|x|y)'; 'abc',''; "
             "NULL,'a'; 'a',NULL; 'abc','('");
}

TEST_F(PostgresTest, BitStringFunctionsMatchPostgresOperators) {
  CrossCheck({"str_bit_and(A, B)", "str_bit_or(A, B)", "str_bit_xor(A, B)", "str_bit_not(A)",
              "str_bit_shift_left(A, N)", "str_bit_shift_right(A, N)"},
             {"(A::varbit & B::varbit)::text", "(A::varbit | B::varbit)::text",
              "(A::varbit # B::varbit)::text", "(~A::varbit)::text", "(A::varbit << N)::text",
              "(A::varbit >> N)::text"},
             "'1100','1010',1; '1','0',1; '10110011','01101110',3; '0000','1111',0; "
             "'1011','0110',4; '1011','0110',9; '1011','0110',-1; '','',2; NULL,NULL,NULL; "
             "'10',NULL,1; '101','1',1; '1','',1; '12','10',1; '1a','10',1");
}

// Results and errors PostgreSQL cannot check: a row of values, or "1|" and
// the error text.
TEST(SqliteFunctions, ResultsAndErrors) {
  tessel::SQLiteConnect lite(":memory:");
  const std::string a63(63, 'a'), bits = "\" is not a bit string of 0 and 1",
                                  min = "-9223372036854775807 - 1";
  const std::pair<std::string, std::string> cases[] = {
      // Shift counts at the ends of 64 bits neither overflow nor wrap.
      {"str_bit_shift_left('1011', " + min + "), str_bit_shift_right('1011', " + min +
           "), str_bit_shift_left('1011', 9223372036854775807), str_bit_shift_right('1011', "
           "9223372036854775807)",
       "0000|0000|0000|0000"},
      // A pattern is compiled once per statement, yet a mode or a pattern
      // that changes from row to row is honoured.
      {"group_concat(regexp('ABC', 'abc', column1), ''), group_concat(regexp('abc', column2, 1), "
       "'') FROM (VALUES (0, 'a'), (1, 'x'), (2, '^b'), (3, 'c$'), (0, 'x'))",
       "10011|10010"},
      {"'a' || char(0) || 'b', regexp('a' || char(0) || 'b', '^a.b$', 1)",
       std::string("a\0b|1", 5)},
      {"regexp('a', 'a', 4)", "1|regexp: mode must be 0, 1, 2 or 3"},
      {"regexp('a', '(' || char(0), 1)",
       "1|regexp: invalid pattern '(\\0': U_REGEX_MISMATCHED_PAREN"},
      // Errors quote a huge argument in part only.
      {"str_bit_not(printf('%.*c', 10000000, 'a'))", "1|str_bit_not: \"" + a63 + "a..." + bits},
      {"str_bit_not('1' || char(0) || '0')", "1|str_bit_not: \"1\\00" + bits},
      {"str_bit_shift_right('101', 1.5)",
       "1|str_bit_shift_right: the shift count must be an integer"},
      // A very long text keeps a frame per character.
      {"regexp(printf('%.*c', 5000000, 'a'), '^(a|b)*c', 1)",
       "1|regexp: matching stopped, the pattern backtracks too deeply"},
  };
  for (const auto& [sql, expected] : cases) {
    const bool ok = lite.ExecuteQuery("SELECT " + sql);
    EXPECT_EQ(ok ? ReadAll(lite) : Rows{{ErrorOf(lite)}}, ok ? R(expected) : Rows{{expected}})
        << sql;
  }
}

// A sink may replace itself while it runs (the call runs on a copy: the
// captured state lives only in the installed function), and a line it writes
// goes to the default sink (standard error from level 4 on), not to itself.
TEST(LogSink, SinkMayLogAndReplaceItself) {
  Row seen;
  auto owned = std::make_shared<int>(0);
  Olk::Log::Sink previous = Olk::Log::SetSink(
      [owned, &seen](int level, const std::string& module, const std::string& text) {
        Olk::Log::SetSink([&seen](int, const std::string&, const std::string& t) {
          seen.push_back("second:" + t);
        });
        seen.push_back("first:" + text + ":" + std::to_string(++*owned));
        write_log(level - 1, module.c_str(), "sink saw: %s", text.c_str());
      });
  owned.reset();
  testing::internal::CaptureStderr();
  write_log(5, "Vexel", "[%s]first.[%s(%d)]", "f", "file.cpp", 1);
  write_log(3, "Vexel", "two");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "[Vexel] sink saw: [f]first.[file.cpp(1)]\n");
  Olk::Log::SetSink(previous);
  EXPECT_EQ(seen, (Row{"first:[f]first.[file.cpp(1)]:1", "second:two"}));
}

VEXEL_ON_BOTH_ENGINES(ConnectionTest);

}  // namespace
}  // namespace vexel_it
