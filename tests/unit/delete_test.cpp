// DeleteBuilder: the statement text per dialect, the ";" each execution
// adds, and the exact log lines.
#include <gtest/gtest.h>

#include <functional>

#include "SQLDelete.h"
#include "SQLUpdate.h"
#include "support/CaptureLog.h"
#include "support/DataChangeRoutes.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::fake;
using vexel_test::PerDialect;

vexel::col c(const char* name) { return vexel::col(name); }

TEST(Delete, TextPerDialect) {
  const struct {
    const char* name;
    std::function<void(vexel::DeleteBuilder&)> build;
    PerDialect want;
  } cases[] = {
      {"no condition deletes everything",
       [](vexel::DeleteBuilder& b) { b.DELETE_FROM(vexel::tab("t")); },
       vexel_test::all("DELETE FROM t")},
      {"returning accumulates; SQL Server names it before the condition",
       [](vexel::DeleteBuilder& b) {
         b.DELETE_FROM(vexel::tab("t")).WHERE(c("id") == 3).RETURNING({c("a")}).RETURNING({c("b")});
       },
       {"DELETE FROM t WHERE id = 3 RETURNING a,b", "DELETE FROM t WHERE id = 3 RETURNING a,b",
        "DELETE FROM t OUTPUT deleted.a,deleted.b WHERE id = 3",
        "DELETE FROM t WHERE id = 3 RETURNING a,b"}},
      // An empty condition is not special-cased: the text keeps both blanks.
      {"AND without WHERE",
       [](vexel::DeleteBuilder& b) {
         b.DELETE_FROM(vexel::tab("t")).AND(c("x") == 1).OR(c("y") == 2);
       },
       vexel_test::all("DELETE FROM t WHERE  AND x = 1 OR y = 2")},
      {"SQLite drops the schema of the table",
       [](vexel::DeleteBuilder& b) {
         b.DELETE_FROM(vexel::sch("main").tab("t")).WHERE(c("id") == 1);
       },
       {"DELETE FROM t WHERE id = 1", "DELETE FROM main.t WHERE id = 1",
        "DELETE FROM main.t WHERE id = 1", "DELETE FROM main.t WHERE id = 1"}},
  };
  for (const auto& tc : cases) {
    for (int code : vexel_test::kDialects) {
      vexel::DeleteBuilder b(fake(code));
      tc.build(b);
      EXPECT_EQ(b.tosql(), tc.want.at(code)) << tc.name << " / " << code;
    }
  }
}

// PostgreSQL and SQLite end the plain form with ";", never the returning
// form; SQL Server sends the text as rendered.
TEST(Delete, ExecutionRoutesAndFailures) {
  vexel_test::check_routes(
      {
          {1, false, "ExecuteUpdate", "SQLiteDelete", "DELETE FROM t WHERE id = 1;"},
          {2, false, "ExecuteUpdate", "PGDelete", "DELETE FROM t WHERE id = 1;"},
          {3, false, "ExecuteUpdate", "SQLServerDelete", "DELETE FROM t WHERE id = 1"},
          {7, false, "ExecuteUpdate", "PGDelete", "DELETE FROM t WHERE id = 1;"},
          {1, true, "ExecuteReturning", "SQLiteDelete", "DELETE FROM t WHERE id = 1 RETURNING id"},
          {2, true, "ExecuteReturning", "PGDelete", "DELETE FROM t WHERE id = 1 RETURNING id"},
          {3, true, "ExecuteReturning", "SQLServerDelete",
           "DELETE FROM t OUTPUT deleted.id WHERE id = 1"},
          {7, true, "ExecuteReturning", "PGDelete", "DELETE FROM t WHERE id = 1 RETURNING id"},
      },
      [](const std::shared_ptr<vexel_test::FakeConnect>& conn, bool returning) {
        vexel::DeleteBuilder b(conn);
        b.DELETE_FROM(vexel::tab("t")).WHERE(c("id") == 1);
        if (returning) b.RETURNING({c("id")});
        return b.Execute();
      });
}

TEST(Delete, MissingConnection) {
  CaptureLog log;
  vexel::DeleteBuilder b(nullptr);
  EXPECT_EQ(b.DELETE_FROM(vexel::tab("t")).tosql(), "DELETE FROM t");
  EXPECT_FALSE(b.Execute());
  EXPECT_EQ(log.texts(), (std::vector<std::string>{
                             "6|[vexel::DeleteBuilder::DeleteBuilder]db_conn is nullptr.[",
                             "5|[vexel::PGDelete::Execute]db_conn_ is nullptr.[",
                         }));
}

TEST(Delete, CopiesAndMoves) {
  auto conn = fake(1);
  vexel::DeleteBuilder a(conn);
  a.DELETE_FROM(vexel::tab("t")).RETURNING({c("id")});
  vexel::DeleteBuilder copy(a);
  copy.WHERE(c("id") == 1);
  EXPECT_EQ(a.tosql(), "DELETE FROM t RETURNING id");
  EXPECT_EQ(copy.tosql(), "DELETE FROM t WHERE id = 1 RETURNING id");
  vexel::DeleteBuilder moved(std::move(copy));
  EXPECT_TRUE(moved.Execute());
  EXPECT_EQ(conn->statements(),
            std::vector<std::string>{"ExecuteReturning:DELETE FROM t WHERE id = 1 RETURNING id"});
}

// The library's own query form: the same ";" rule as Execute, and the
// connection's ExecuteQuery.
TEST(Delete, ImplementationQueryForm) {
  const PerDialect want = {"ExecuteQuery:DELETE FROM t;", "ExecuteQuery:DELETE FROM t;",
                           "ExecuteQuery:DELETE FROM t", "ExecuteQuery:DELETE FROM t;"};
  for (int code : vexel_test::kDialects) {
    auto conn = fake(code);
    auto del = vexel::make_delete(vexel_test::db(code), conn);
    del->DELETE_FROM("t");
    EXPECT_TRUE(del->ExecuteQuery());
    auto up = vexel::make_update(vexel_test::db(code), conn);
    up->UPDATE("t");
    up->SET("a", "1");
    EXPECT_TRUE(up->ExecuteQuery());
    EXPECT_EQ(conn->statements(),
              (std::vector<std::string>{want.at(code), "ExecuteQuery:UPDATE t SET a = 1"}))
        << code;
  }
}

}  // namespace
