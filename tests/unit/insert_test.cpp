// InsertBuilder: the statement text per dialect, the routes each execution
// takes on the connection, and the exact failure lines.
#include <gtest/gtest.h>

#include <functional>

#include "SQLInsert.h"
#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::fake;
using vexel_test::PerDialect;

vexel::col c(const char* name) { return vexel::col(name); }

vexel::InsertBuilder base(int code) {
  vexel::InsertBuilder b(fake(code));
  b.INSERT_INTO(vexel::tab("t")).COLUMNS({c("a"), c("b")});
  return b;
}

struct TextCase {
  const char* name;
  std::function<void(vexel::InsertBuilder&)> build;
  PerDialect want;
};

TEST(Insert, TextPerDialect) {
  const std::string merge_head =
      "MERGE INTO t USING (VALUES(1,'x')) AS Excluded(a,b) ON(t.a = Excluded.a) "
      "WHEN NOT MATCHED THEN INSERT(a,b) VALUES(1,'x')";
  const TextCase cases[] = {
      {"rows accumulate",
       [](vexel::InsertBuilder& b) {
         b.VALUES({1, "x"}).VALUES({2, "y"});
       },
       {"INSERT INTO t(a,b) VALUES(1,'x'),(2,'y')", "INSERT INTO t(a,b) VALUES(1,'x'),(2,'y')",
        "INSERT INTO t(a,b) VALUES (1,'x'),(2,'y')", "INSERT INTO t(a,b) VALUES(1,'x'),(2,'y')"}},
      {"no row",
       [](vexel::InsertBuilder&) {},
       {"INSERT INTO t(a,b) VALUES", "INSERT INTO t(a,b) VALUES", "INSERT INTO t(a,b) VALUES ",
        "INSERT INTO t(a,b) VALUES"}},
      {"conflict without SET does nothing",
       [](vexel::InsertBuilder& b) {
         b.VALUES({1, "x"}).ON_CONFLICT({c("a")}).DO_UPDATE();
       },
       {"INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO NOTHING ",
        "INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO NOTHING ", merge_head + ";",
        "INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO NOTHING "}},
      {"upsert in column order, last SET wins",
       [](vexel::InsertBuilder& b) {
         b.VALUES({1, "x"}).ON_CONFLICT({c("a")}).DO_UPDATE();
         b.SET(c("c"), vexel::SQLValue(9)).SET(c("b"), c("b").EXCLUDED());
         b.SET(c("c"), vexel::SQLValue(5)).RETURNING({c("a")});
       },
       {"INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO UPDATE SET b = EXCLUDED.b, c = 5 "
        "RETURNING a",
        "INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO UPDATE SET b = EXCLUDED.b, c = 5 "
        "RETURNING a",
        merge_head + " WHEN MATCHED THEN UPDATE SET b = EXCLUDED.b,c = 5 OUTPUT inserted.a;",
        "INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO UPDATE SET b = EXCLUDED.b, c = 5 "
        "RETURNING a"}},
      {"condition without conflict lands behind the values",
       [](vexel::InsertBuilder& b) {
         b.VALUES({1, "x"}).WHERE(c("a") == 1).AND(c("b") == 2).OR(c("b") == 3);
       },
       {"INSERT INTO t(a,b) VALUES(1,'x') WHERE a = 1 AND b = 2 OR b = 3",
        "INSERT INTO t(a,b) VALUES(1,'x') WHERE a = 1 AND b = 2 OR b = 3",
        "INSERT INTO t(a,b) VALUES (1,'x')",
        "INSERT INTO t(a,b) VALUES(1,'x') WHERE a = 1 AND b = 2 OR b = 3"}},
      {"returning",
       [](vexel::InsertBuilder& b) {
         b.VALUES({1, "x"}).RETURNING({c("a"), c("b")});
       },
       {"INSERT INTO t(a,b) VALUES(1,'x') RETURNING a,b",
        "INSERT INTO t(a,b) VALUES(1,'x') RETURNING a,b",
        "INSERT INTO t(a,b) OUTPUT Inserted.a,Inserted.b VALUES (1,'x')",
        "INSERT INTO t(a,b) VALUES(1,'x') RETURNING a,b"}},
      // SQLite drops the schema from columns, not from the table.
      {"columns take the builder's dialect",
       [](vexel::InsertBuilder& b) {
         const vexel::tab st = vexel::sch("s").tab("t");
         b.INSERT_INTO(st).COLUMNS({st.col("a")}).VALUES({1}).RETURNING({st.col("a")});
       },
       {"INSERT INTO s.t(t.a) VALUES(1) RETURNING t.a",
        "INSERT INTO s.t(s.t.a) VALUES(1) RETURNING s.t.a",
        "INSERT INTO s.t(s.t.a) OUTPUT Inserted.s.t.a VALUES (1)",
        "INSERT INTO s.t(s.t.a) VALUES(1) RETURNING s.t.a"}},
      {"two conflict columns",
       [](vexel::InsertBuilder& b) {
         b.VALUES({1, "x"}).ON_CONFLICT({c("a"), c("b")}).SET(c("b"), vexel::SQLExpr("b + 1"));
       },
       {"INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a,b) DO UPDATE SET b = b + 1",
        "INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a,b) DO UPDATE SET b = b + 1",
        "MERGE INTO t USING (VALUES(1,'x')) AS Excluded(a,b) ON(t.a = Excluded.a AND t.b = "
        "Excluded.b) WHEN NOT MATCHED THEN INSERT(a,b) VALUES(1,'x') WHEN MATCHED THEN UPDATE "
        "SET b = b + 1;",
        "INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a,b) DO UPDATE SET b = b + 1"}},
  };
  for (const auto& tc : cases) {
    for (int code : vexel_test::kDialects) {
      vexel::InsertBuilder b = base(code);
      tc.build(b);
      EXPECT_EQ(b.tosql(), tc.want.at(code)) << tc.name << " / " << code;
      EXPECT_EQ(b.tosql(), b.tosql()) << "rendering consumes nothing";
    }
  }
}

// SQL Server merges exactly one row; other counts throw, nothing runs.
TEST(Insert, MergeNeedsOneRow) {
  for (int rows : {0, 2}) {
    auto conn = fake(3);
    vexel::InsertBuilder b(conn);
    b.INSERT_INTO(vexel::tab("t")).COLUMNS({c("a")}).ON_CONFLICT({c("a")});
    for (int i = 0; i < rows; ++i) b.VALUES({i});
    CaptureLog log;
    EXPECT_THROW(b.tosql(), std::string);
    EXPECT_THROW(b.Execute(), std::string);
    EXPECT_EQ(conn->count("ExecuteUpdate"), 0);
    EXPECT_TRUE(log.lines().empty());
  }
}

TEST(Insert, ExecutionRoutes) {
  const std::string ins = "INSERT INTO t(a,b) VALUES(1,'x')";
  const std::string read = "ExecuteQuery:SELECT last_value FROM s.t_id_seq;";
  const struct {
    const char* name;
    bool returning;
    std::vector<std::string> sqlite, postgres, sqlserver, unknown;  // "operation:statement"
  } cases[] = {
      // The sequence read follows only on PostgreSQL: unknown codes render it empty.
      {"plain with sequence read",
       false,
       {"ExecuteUpdate:" + ins},
       {"ExecuteUpdate:" + ins, read},
       {"ExecuteUpdate:INSERT INTO t(a,b) VALUES (1,'x')"},
       {"ExecuteUpdate:" + ins}},
      {"returning skips the sequence read",
       true,
       {"ExecuteReturning:" + ins + " RETURNING a"},
       {"ExecuteReturning:" + ins + " RETURNING a"},
       {"ExecuteReturning:INSERT INTO t(a,b) OUTPUT Inserted.a VALUES (1,'x')"},
       {"ExecuteReturning:" + ins + " RETURNING a"}},
  };
  for (const auto& tc : cases) {
    for (int code : vexel_test::kDialects) {
      auto conn = fake(code);
      vexel::InsertBuilder b(conn);
      b.INSERT_INTO(vexel::tab("t")).COLUMNS({c("a"), c("b")}).VALUES({1, "x"});
      b.EXCLUDE(vexel::CURRVAL(vexel::seq("s.t_id_seq"), vexel::tab("t")));
      if (tc.returning) b.RETURNING({c("a")});
      EXPECT_TRUE(b.Execute()) << tc.name << " / " << code;
      const auto& want = code == 1   ? tc.sqlite
                         : code == 2 ? tc.postgres
                         : code == 3 ? tc.sqlserver
                                     : tc.unknown;
      EXPECT_EQ(conn->statements(), want) << tc.name << " / " << code;
    }
  }
}

TEST(Insert, ResetReturnsToPlainExecute) {
  auto conn = fake(2);
  vexel::InsertBuilder b(conn);
  b.INSERT_INTO(vexel::tab("t")).COLUMNS({c("a")}).VALUES({1}).RETURNING({c("a")});
  b.Reset();
  EXPECT_EQ(b.tosql(), "INSERT INTO () VALUES");
  b.INSERT_INTO(vexel::tab("t")).COLUMNS({c("a")}).VALUES({1});
  EXPECT_TRUE(b.Execute());
  EXPECT_EQ(conn->statements(),
            std::vector<std::string>{"ExecuteUpdate:INSERT INTO t(a) VALUES(1)"});
}

TEST(Insert, FailureLines) {
  const std::string ins = "INSERT INTO t(a) VALUES(1)";
  const struct {
    int code;
    const char* fail_op;
    std::vector<std::string> want;
  } cases[] = {
      {1,
       "ExecuteUpdate",
       {"5|[vexel::SQLiteInsert::Execute]ExecuteQuery failed errorcode:42.error_info:boom,sql:" +
        ins + ".["}},
      {2,
       "ExecuteUpdate",
       {"5|[vexel::PGInsert::Execute]ExecuteQuery failed errorcode:42.error_info:boom,sql:" + ins +
        ".["}},
      // The insert happened; the failed read still fails the call.
      {2,
       "ExecuteQuery",
       {"5|[vexel::PGInsert::Execute]ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT "
        "last_value FROM s.q;.["}},
      {3,
       "ExecuteUpdate",
       {"5|[vexel::SQLServerInsert::Execute]ExecuteQuery failed "
        "errorcode:42.error_info:boom,sql:INSERT INTO t(a) VALUES (1).["}},
      {7,
       "ExecuteUpdate",
       {"5|[vexel::PGInsert::Execute]ExecuteQuery failed errorcode:42.error_info:boom,sql:" + ins +
        ".["}},
  };
  for (const auto& tc : cases) {
    auto conn = fake(tc.code);
    conn->FailOn(tc.fail_op);
    vexel::InsertBuilder b(conn);
    b.INSERT_INTO(vexel::tab("t")).COLUMNS({c("a")}).VALUES({1});
    b.EXCLUDE(vexel::CURRVAL(vexel::seq("s.q"), vexel::tab("t")));
    CaptureLog log;
    EXPECT_FALSE(b.Execute()) << tc.code;
    EXPECT_EQ(log.texts(), tc.want) << tc.code << tc.fail_op;
    EXPECT_EQ(conn->count("GetLastError"), 1) << tc.code;
  }
}

// The library's own query form: PostgreSQL reads the failed insert's error
// through GetLastQueryError, the others through GetLastError.
TEST(Insert, ImplementationQueryErrorSource) {
  const struct {
    int code;
    const char* getter;
    const char* site;
  } cases[] = {{1, "GetLastError", "SQLiteInsert"},
               {2, "GetLastQueryError", "PGInsert"},
               {3, "GetLastError", "SQLServerInsert"},
               {7, "GetLastQueryError", "PGInsert"}};
  for (const auto& tc : cases) {
    auto conn = fake(tc.code);
    conn->FailOn("ExecuteQuery", 7, "bad");
    auto impl = vexel::make_insert(vexel_test::db(tc.code), conn);
    impl->INSERT_INTO("t");
    CaptureLog log;
    EXPECT_FALSE(impl->ExecuteQuery());
    EXPECT_EQ(conn->count(tc.getter), 1) << tc.code;
    EXPECT_EQ(log.texts(), std::vector<std::string>{"5|[vexel::" + std::string(tc.site) +
                                                    "::ExecuteQuery]ExecuteQuery failed "
                                                    "errorcode:7.error_info:bad,sql:" +
                                                    impl->tosql() + ".["});
  }
}

TEST(Insert, MissingConnection) {
  vexel::InsertBuilder b(nullptr);
  CaptureLog log;
  EXPECT_FALSE(b.INSERT_INTO(vexel::tab("t")).VALUES({1}).Execute());
  b.Reset();
  EXPECT_EQ(log.texts(), (std::vector<std::string>{
                             "5|[vexel::PGInsert::Execute]db_conn_ is nullptr.[",
                             "6|[vexel::InsertBuilder::Reset]db_conn is nullptr.[",
                         }));
}

TEST(Insert, CopyIsIndependentAssignmentShares) {
  vexel::InsertBuilder a = base(1);
  vexel::InsertBuilder copy(a);
  copy.VALUES({1, 2});
  EXPECT_EQ(a.tosql(), "INSERT INTO t(a,b) VALUES");
  EXPECT_EQ(copy.tosql(), "INSERT INTO t(a,b) VALUES(1,2)");
  vexel::InsertBuilder shared(fake(2));
  shared = a;
  shared.VALUES({3, 4});
  EXPECT_EQ(a.tosql(), "INSERT INTO t(a,b) VALUES(3,4)");
}

}  // namespace
