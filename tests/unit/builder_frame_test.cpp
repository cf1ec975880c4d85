// The facade's life: dialect choice, copies, shared assignment, Reset, and
// the log lines of a missing connection or a failed execution.
#include <gtest/gtest.h>

#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::fake;
using vexel_test::FakeConnect;

vexel::tab table() { return vexel::sch("s").tab("t"); }

void minimal(vexel::QueryBuilder& q) {
  q.SELECT({table().col("a"), table().col("b")}).FROM(table());
}

TEST(BuilderFrame, MinimalStatementPerDialect) {
  // Unknown codes take the PostgreSQL class but render by their own code.
  const struct {
    int code;
    const char* want;
  } cases[] = {
      {1, "SELECT t.a , t.b FROM s.t"},     {2, "SELECT s.t.a , s.t.b FROM s.t"},
      {3, "SELECT s.t.a , s.t.b FROM s.t"}, {0, "SELECT s.t.a , s.t.b FROM s.t"},
      {4, "SELECT s.t.a , s.t.b FROM s.t"}, {7, "SELECT s.t.a , s.t.b FROM s.t"},
  };
  for (const auto& c : cases) {
    vexel::QueryBuilder q(fake(c.code));
    minimal(q);
    EXPECT_EQ(q.tosql(), c.want) << c.code;
    EXPECT_EQ(static_cast<int>(q.db_type()), c.code);
  }
}

TEST(BuilderFrame, WithoutFromText) {
  for (int code : vexel_test::kDialects) {
    vexel::QueryBuilder q(fake(code));
    q.SELECT({vexel::col("a"), vexel::col("b")});
    EXPECT_EQ(q.tosql(), code == 3 ? "SELECT a , b FROM " : "SELECT a , b") << code;
  }
}

TEST(BuilderFrame, AsksTheDialectOncePerObject) {
  auto conn = fake(1);
  vexel::QueryBuilder q(conn);
  EXPECT_EQ(conn->count("GetDBType"), 2);  // the facade, then the implementation
  q.Reset();
  EXPECT_EQ(conn->count("GetDBType"), 4);
}

TEST(BuilderFrame, EmptyConnection) {
  CaptureLog log;
  vexel::QueryBuilder q(nullptr);
  ASSERT_EQ(log.texts(),
            std::vector<std::string>{"6|[vexel::QueryBuilder::QueryBuilder]db_conn is nullptr.["});
  EXPECT_EQ(log.lines()[0].module, "Vexel");
  minimal(q);
  EXPECT_EQ(q.tosql(), "SELECT s.t.a , s.t.b FROM s.t");
  log.clear();
  EXPECT_FALSE(q.Execute());
  EXPECT_FALSE(q.ExecuteQueryUDT(5));
  EXPECT_FALSE(q.ExecuteSortByCollate("C"));
  EXPECT_FALSE(q.ExecuteLoop());
  EXPECT_EQ(log.texts(), (std::vector<std::string>{
                             "5|[vexel::PGQuery::Execute]db_conn_ is nullptr.[",
                             "5|[vexel::PGQuery::ExecuteQueryUDT]db_conn_ is nullptr.[",
                             "5|[vexel::PGQuery::ExecuteSortByCollate]db_conn_ is nullptr.[",
                             "5|[vexel::PGQuery::ExecuteLoop]db_conn_ is nullptr.[",
                         }));
}

TEST(BuilderFrame, LogLineEndsWithSourcePosition) {
  CaptureLog log;
  vexel::QueryBuilder q(nullptr);
  ASSERT_EQ(log.lines().size(), 1u);
  const std::string& text = log.lines()[0].text;
  EXPECT_NE(text.find("QueryBuilder.cpp("), std::string::npos) << text;
  EXPECT_EQ(text.back(), ']');
}

TEST(BuilderFrame, FailureReadsTheErrorOnce) {
  const struct {
    int code;
    const char* line;
  } cases[] = {
      {1,
       "5|[vexel::SQLiteQuery::Execute]ExecuteQuery failed errorcode:42.error_info:boom,"
       "sql:SELECT t.a , t.b FROM s.t;.["},
      {2,
       "5|[vexel::PGQuery::Execute]ExecuteQuery failed errorcode:42.error_info:boom,"
       "sql:SELECT s.t.a , s.t.b FROM s.t;.["},
      {3,
       "5|[vexel::SQLServerQuery::Execute]ExecuteQuery failed errorcode:42.error_info:boom,"
       "sql:SELECT s.t.a , s.t.b FROM s.t.["},
      {7,
       "5|[vexel::PGQuery::Execute]ExecuteQuery failed errorcode:42.error_info:boom,"
       "sql:SELECT s.t.a , s.t.b FROM s.t;.["},
  };
  for (const auto& c : cases) {
    auto conn = fake(c.code);
    vexel::QueryBuilder q(conn);
    minimal(q);
    EXPECT_TRUE(q.Execute());
    EXPECT_EQ(conn->count("GetLastError"), 0);
    conn->FailOn("ExecuteQuery");
    CaptureLog log;
    EXPECT_FALSE(q.Execute());
    EXPECT_EQ(conn->count("GetLastError"), 1);
    EXPECT_EQ(log.texts(), std::vector<std::string>{c.line});
    EXPECT_EQ(q.tosql(), q.tosql()) << "rendering never changes state";
  }
}

TEST(BuilderFrame, CopyIsIndependentAndKeepsItsConnection) {
  auto conn = fake(1);
  vexel::QueryBuilder q(conn);
  q.SELECT({vexel::col("a")}).FROM(vexel::sch("public").view("v"));
  vexel::QueryBuilder copy(q);
  EXPECT_EQ(copy.tosql(), q.tosql());
  EXPECT_EQ(copy.db_type(), tessel::DB_SQLITE);
  copy.FROM(vexel::tab("other"));
  EXPECT_EQ(q.tosql(), "SELECT a FROM v");
  EXPECT_EQ(copy.tosql(), "SELECT a FROM other");
  // The copy runs the plain form: its view flag starts cleared.
  EXPECT_TRUE(copy.Execute());
  EXPECT_TRUE(q.Execute());
  EXPECT_EQ(conn->statements(),
            (std::vector<std::string>{"ExecuteQuery:SELECT a FROM other;",
                                      "ExecuteQueryContainView:SELECT a FROM v;"}));
  // Reset on the copy has no facade connection: PostgreSQL, logged.
  CaptureLog log;
  copy.Reset();
  EXPECT_EQ(copy.db_type(), tessel::DB_POSTGRESQL);
  EXPECT_EQ(log.texts(),
            std::vector<std::string>{"6|[vexel::QueryBuilder::Reset]db_conn is nullptr.["});
  EXPECT_FALSE(copy.Execute());
}

TEST(BuilderFrame, AssignmentSharesTheStatement) {
  auto c1 = fake(2);
  auto c3 = fake(3);
  auto b1 = std::make_unique<vexel::QueryBuilder>(c1);
  auto b2 = std::make_unique<vexel::QueryBuilder>(c3);
  b1->SELECT({vexel::col("a")}).FROM(vexel::tab("t"));
  *b2 = *b1;
  EXPECT_EQ(b2->tosql(), "SELECT a FROM t");
  b2->WHERE(vexel::SQLExpr("a = 1"));
  EXPECT_EQ(b1->tosql(), "SELECT a FROM t WHERE a = 1");
  EXPECT_EQ(b2->db_type(), tessel::DB_POSTGRESQL);
  b1.reset();  // either order of destruction is safe
  EXPECT_EQ(b2->tosql(), "SELECT a FROM t WHERE a = 1");
  EXPECT_TRUE(b2->Execute());
  EXPECT_EQ(c1->count("ExecuteQuery"), 1);
  b2.reset();
  vexel::QueryBuilder self(c1);
  self = *&self;
  EXPECT_EQ(self.tosql(), "SELECT ");
}

TEST(BuilderFrame, ResetEmptiesEverything) {
  auto conn = fake(2);
  vexel::QueryBuilder q(conn);
  q.SELECT({vexel::col("a")})
      .FROM(vexel::sch("public").view("v"))
      .WHERE(vexel::SQLExpr("x"))
      .LIMIT(3);
  conn->set_db_type(1);
  q.Reset();
  EXPECT_EQ(q.tosql(), "SELECT ");
  EXPECT_EQ(q.db_type(), tessel::DB_SQLITE);
  EXPECT_TRUE(q.Execute());
  EXPECT_EQ(conn->statements().back(), "ExecuteQuery:SELECT ;");
}

}  // namespace
