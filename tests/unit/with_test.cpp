// WITH statements: the same text in every dialect, rendered when each part
// is given, and each execution form's route.
#include <gtest/gtest.h>

#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::fake;

vexel::QueryBuilder select_from(int code, const char* column, const char* table) {
  vexel::QueryBuilder q(fake(code));
  q.SELECT({vexel::col(column)}).FROM(vexel::tab(table));
  return q;
}

TEST(With, TextsAreTheSameInEveryDialect) {
  for (int code : vexel_test::kDialects) {
    const struct {
      const char* name;
      std::function<void(vexel::WithBuilder&)> build;
      std::string want;
    } cases[] = {
        {"one statement",
         [&](vexel::WithBuilder& w) {
           w.AS("t", select_from(code, "a", "x")).WithDo(select_from(code, "a", "t"));
         },
         "WITH t AS (SELECT a FROM x) SELECT a FROM t"},
        {"recursive, two statements with a bare comma",
         [&](vexel::WithBuilder& w) {
           w.RECURSIVE().AS("a", select_from(code, "1", "x")).AS("b", select_from(code, "2", "y"));
           w.WithDo("SELECT 1");
         },
         "WITH RECURSIVE a AS (SELECT 1 FROM x),b AS (SELECT 2 FROM y) SELECT 1"},
        {"repeated names are kept, the last main statement wins",
         [&](vexel::WithBuilder& w) {
           w.AS("t", select_from(code, "a", "x")).AS("t", select_from(code, "b", "x"));
           w.WithDo("old").WithDo("SELECT * FROM t");
         },
         "WITH t AS (SELECT a FROM x),t AS (SELECT b FROM x) SELECT * FROM t"},
        {"nothing given", [](vexel::WithBuilder&) {}, "WITH  "},
        {"no main statement",
         [&](vexel::WithBuilder& w) { w.AS("t", select_from(code, "a", "x")); },
         "WITH t AS (SELECT a FROM x) "},
    };
    for (const auto& c : cases) {
      vexel::WithBuilder w(fake(code));
      c.build(w);
      // SQL Server's query text always carries " FROM "; the WITH frame is
      // the same.
      EXPECT_EQ(w.tosql(), c.want) << c.name << " in dialect " << code;
    }
  }
}

TEST(With, TakesEveryBuilderKind) {
  const vexel::tab t("t");
  vexel::InsertBuilder ins(fake(2));
  ins.INSERT_INTO(t).COLUMNS({vexel::col("a")}).VALUES({vexel::SQLValue(1)});
  vexel::UpdateBuilder up(fake(2));
  up.UPDATE(t).SET(vexel::col("a"), vexel::SQLValue(2));
  vexel::DeleteBuilder del(fake(2));
  del.DELETE_FROM(t);
  vexel::WithBuilder w(fake(2));
  w.AS("i", ins).AS("u", up).AS("d", del).WithDo(del);
  EXPECT_EQ(w.tosql(), "WITH i AS (" + ins.tosql() + "),u AS (" + up.tosql() + "),d AS (" +
                           del.tosql() + ") " + del.tosql());
  w.WithDo(ins);
  EXPECT_EQ(w.tosql().substr(w.tosql().size() - ins.tosql().size()), ins.tosql());
  w.WithDo(up);
  EXPECT_EQ(w.tosql().substr(w.tosql().size() - up.tosql().size()), up.tosql());
}

TEST(With, PartsAreRenderedWhenGiven) {
  vexel::QueryBuilder q = select_from(2, "a", "x");
  vexel::WithBuilder w(fake(2));
  w.AS("t", q).WithDo(q);
  q.WHERE(vexel::SQLExpr("later"));
  EXPECT_EQ(w.tosql(), "WITH t AS (SELECT a FROM x) SELECT a FROM x");
}

TEST(With, RoutesPerDialect) {
  const struct {
    int code;
    const char* plain;
    const char* time_out;
    const char* collate;
    const char* loop;
    const char* cls;
  } cases[] = {
      {1, "ExecuteQuery", "ExecuteQuery", "ExecuteQuery", "ExecuteQuery", "SQLiteWith"},
      {2, "ExecuteQuery", "ExecuteQueryUDT", "ExecuteSortByCollate", "ExecuteLoop", "PGWith"},
      {3, "ExecuteQuery", "ExecuteQuery", "ExecuteQuery", "ExecuteQuery", "SQLServerWith"},
      {7, "ExecuteQuery", "ExecuteQueryUDT", "ExecuteSortByCollate", "ExecuteLoop", "PGWith"},
  };
  const std::string sql = "WITH  SELECT 1";
  for (const auto& c : cases) {
    auto conn = fake(c.code);
    vexel::WithBuilder w(conn);
    w.WithDo("SELECT 1");
    conn->clear();
    EXPECT_TRUE(w.Execute());
    EXPECT_TRUE(w.ExecuteQueryUDT(9));
    EXPECT_TRUE(w.ExecuteSortByCollate("C"));
    EXPECT_TRUE(w.ExecuteLoop());
    // No ";" in any dialect.
    EXPECT_EQ(conn->statements(),
              (std::vector<std::string>{
                  std::string(c.plain) + ":" + sql, std::string(c.time_out) + ":" + sql,
                  std::string(c.collate) + ":" + sql, std::string(c.loop) + ":" + sql}));

    conn->FailOn("ExecuteQuery");
    conn->FailOn(c.time_out);
    conn->FailOn(c.collate);
    conn->FailOn(c.loop);
    CaptureLog log;
    EXPECT_FALSE(w.Execute());
    EXPECT_FALSE(w.ExecuteQueryUDT(9));
    EXPECT_FALSE(w.ExecuteSortByCollate("C"));
    EXPECT_FALSE(w.ExecuteLoop());
    const std::string cls = std::string("5|[vexel::") + c.cls + "::";
    EXPECT_EQ(
        log.texts(),
        (std::vector<std::string>{
            cls + "Execute]ExecuteQuery failed errorcode:42.error_info:boom,sql:" + sql + ".[",
            cls +
                "ExecuteQueryUDT]ExecuteQueryUDT failed,time_out:9, "
                "errorcode:42.error_info:boom,sql:" +
                sql + ".[",
            cls +
                "ExecuteSortByCollate]ExecuteQueryUDT failed,collate_name:C, "
                "errorcode:42.error_info:boom,sql:" +
                sql + ".[",
            cls + "ExecuteLoop]ExecuteQueryUDT failed,errorcode:42.error_info:boom,sql:" + sql +
                ".[",
        }))
        << c.code;
  }
}

TEST(With, LifeCycle) {
  // An empty connection is not logged; execution logs the missing connection.
  CaptureLog log;
  vexel::WithBuilder w(nullptr);
  EXPECT_TRUE(log.lines().empty());
  w.WithDo("SELECT 1");
  EXPECT_FALSE(w.Execute());
  EXPECT_EQ(log.texts(),
            std::vector<std::string>{"5|[vexel::PGWith::Execute]db_conn_ is nullptr.["});

  auto conn = fake(1);
  vexel::WithBuilder a(conn);
  a.RECURSIVE().WithDo("SELECT 1");
  vexel::WithBuilder copy(a);
  copy.WithDo("SELECT 2");
  EXPECT_EQ(a.tosql(), "WITH RECURSIVE  SELECT 1");
  EXPECT_EQ(copy.tosql(), "WITH RECURSIVE  SELECT 2");
  EXPECT_TRUE(copy.Execute()) << "a copy keeps the implementation's connection";

  vexel::WithBuilder moved(std::move(a));
  EXPECT_EQ(moved.tosql(), "WITH RECURSIVE  SELECT 1");
  EXPECT_EQ(a.GetImpl(),
            nullptr);  // NOLINT(bugprone-use-after-move): the moved-from state is defined
  log.clear();
  EXPECT_EQ(a.tosql(), "");   // NOLINT(bugprone-use-after-move)
  EXPECT_FALSE(a.Execute());  // NOLINT(bugprone-use-after-move)
  a.RECURSIVE().WithDo("x");  // NOLINT(bugprone-use-after-move)
  EXPECT_TRUE(log.lines().empty());

  vexel::WithBuilder assigned(fake(2));
  assigned = moved;
  assigned.WithDo("SELECT 3");
  EXPECT_EQ(moved.tosql(), "WITH RECURSIVE  SELECT 1") << "assignment copies";
  // A moved-to builder has no facade connection: Reset falls back to
  // PostgreSQL.
  moved.Reset();
  EXPECT_EQ(moved.tosql(), "WITH  ");
  EXPECT_EQ(moved.db_type(), tessel::DB_POSTGRESQL);
}

}  // namespace
