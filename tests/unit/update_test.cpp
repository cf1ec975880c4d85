// UpdateBuilder: the statement text per dialect (single, multi-table and
// batch forms), the routes each execution takes, and the exact log lines.
#include <gtest/gtest.h>

#include <functional>

#include "support/CaptureLog.h"
#include "support/DataChangeRoutes.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::fake;
using vexel_test::PerDialect;

vexel::col c(const char* name) { return vexel::col(name); }
vexel::SQLValue v(int n) { return vexel::SQLValue(n); }
vexel::SQLValue v(const char* s) { return vexel::SQLValue(s); }

struct TextCase {
  const char* name;
  std::function<void(vexel::UpdateBuilder&)> build;
  PerDialect want;
};

void check(const TextCase* begin, const TextCase* end) {
  for (const TextCase* tc = begin; tc != end; ++tc) {
    for (int code : vexel_test::kDialects) {
      vexel::UpdateBuilder b(fake(code));
      b.UPDATE(vexel::tab("t"));
      tc->build(b);
      EXPECT_EQ(b.tosql(), tc->want.at(code)) << tc->name << " / " << code;
      EXPECT_EQ(b.tosql(), b.tosql()) << "rendering consumes nothing";
    }
  }
}

TEST(Update, TextPerDialect) {
  const std::string pg_ret = "UPDATE t SET a = 1, b = 'x' WHERE id = 3 RETURNING id,a";
  const TextCase cases[] = {
      {"assignments in name order, last SET wins, returning accumulates",
       [](vexel::UpdateBuilder& b) {
         b.SET(c("b"), v("y")).SET(c("a"), v(1)).SET(c("b"), v("x"));
         b.WHERE(c("id") == 3).RETURNING({c("id")}).RETURNING({c("a")});
       },
       {pg_ret, pg_ret, "UPDATE t SET a = 1, b = 'x' OUTPUT inserted.id,inserted.a WHERE id = 3",
        pg_ret}},
      {"no assignment trims into the keyword", [](vexel::UpdateBuilder&) {},
       vexel_test::all("UPDATE t SE")},
      {"AND and OR extend without brackets",
       [](vexel::UpdateBuilder& b) {
         b.SET(c("a"), c("b")).WHERE(c("id") == 1).AND(c("id") == 2).OR(c("id") == 3);
       },
       vexel_test::all("UPDATE t SET a = b WHERE id = 1 AND id = 2 OR id = 3")},
      {"expression, subquery and arrays",
       [](vexel::UpdateBuilder& b) {
         vexel::QueryBuilder q(fake(2));
         q.SELECT({c("m")}).FROM(vexel::tab("u"));
         b.SET(c("a"), vexel::SQLExpr("a + 1")).SET(c("b"), q).SET(c("c"), std::vector<int>{1, 2});
         b.SET(c("d"), std::vector<std::string>{"x"});
       },
       {"UPDATE t SET a = a + 1, b = (SELECT m FROM u), c = json_array(1,2), d = json_array(\"x\")",
        "UPDATE t SET a = a + 1, b = (SELECT m FROM u), c = ARRAY[1,2]::INTEGER[], d = "
        "ARRAY[\"x\"]::VARCHAR[]",
        "UPDATE t SET a = a + 1, b = (SELECT m FROM u), c = ARRAY[1,2]::INTEGER[], d = "
        "ARRAY[\"x\"]::VARCHAR[]",
        "UPDATE t SET a = a + 1, b = (SELECT m FROM u), c = ARRAY[1,2]::INTEGER[], d = "
        "ARRAY[\"x\"]::VARCHAR[]"}},
      {"per-dialect value",
       [](vexel::UpdateBuilder& b) {
         b.SET(c("a"), std::map<tessel::DBTYPE, vexel::SQLValue>{{tessel::DB_SQLITE, v(1)},
                                                                 {tessel::DB_POSTGRESQL, v(2)},
                                                                 {tessel::DB_SQLSERVER, v(3)},
                                                                 {vexel_test::db(7), v(7)}});
       },
       {"UPDATE t SET a = 1", "UPDATE t SET a = 2", "UPDATE t SET a = 3", "UPDATE t SET a = 7"}},
      {"VACUUM replaces the statement on PostgreSQL only",
       [](vexel::UpdateBuilder& b) {
         b.SET(c("a"), v(1)).VACUUM({vexel::tab("a")}).VACUUM({vexel::tab("b")});
       },
       {"", "VACUUM a;VACUUM b;", "UPDATE t SET a = 1", "VACUUM a;VACUUM b;"}},
      // No blank between table and column: hosts send the text as it stands.
      {"UPDATE(col) short form on SQLite",
       [](vexel::UpdateBuilder& b) { b.UPDATE(c("x")).SET(c("a"), v(1)); },
       {"UPDATE tx", "UPDATE t SET a = 1", "UPDATE t SET a = 1", "UPDATE t SET a = 1"}},
      {"columns take the builder's dialect",
       [](vexel::UpdateBuilder& b) {
         const vexel::tab st = vexel::sch("s").tab("t");
         b.UPDATE(st).SET(st.col("a"), v(1)).RETURNING({st.col("a")});
       },
       {"UPDATE s.t SET t.a = 1 RETURNING t.a", "UPDATE s.t SET s.t.a = 1 RETURNING s.t.a",
        "UPDATE s.t SET s.t.a = 1 OUTPUT inserted.s.t.a",
        "UPDATE s.t SET s.t.a = 1 RETURNING s.t.a"}},
  };
  check(std::begin(cases), std::end(cases));
}

TEST(Update, MultiTableAndBatchText) {
  const std::vector<std::vector<vexel::SQLValue>> rows = {{v(1), v("a")}, {v(2), v("b")}};
  const std::string pg_batch =
      "UPDATE t SET c=tmp.c FROM (VALUES (1, 'a') , (2, 'b') )  AS tmp(k,c) WHERE t.k=tmp.k";
  const std::string pg_union = "UPDATE t SET a = 0, x=s.y FROM s,r WHERE t.id=s.id,s.r=r.id";
  const TextCase cases[] = {
      {"batch with one key",
       [rows](vexel::UpdateBuilder& b) {
         b.BATCH_SET({c("c")}).BATCH_CONDITION({c("k")}).BATCH_VALUES({c("k"), c("c")}, rows);
       },
       {"UPDATE t SET c= CASE  WHEN k=1 THEN 'a' WHEN k=2 THEN 'b' END  WHERE k IN (1,2)", pg_batch,
        "UPDATE t SE", pg_batch}},
      {"batch with two keys and two set columns, then a further condition",
       [](vexel::UpdateBuilder& b) {
         b.BATCH_SET({c("c"), c("d")}).BATCH_CONDITION({c("k1"), c("k2")});
         b.BATCH_VALUES({c("k1"), c("k2"), c("c"), c("d")},
                        {{v(1), v(2), v("a"), v(5)}, {v(3), v(4), v("b"), v(6)}});
         b.WHERE(c("z") == 0);
       },
       {"UPDATE t SET c= CASE  WHEN k1=1 AND k2=2 THEN 'a' WHEN k1=3 AND k2=4 THEN 'b' END ,d= "
        "CASE  WHEN k1=1 AND k2=2 THEN 5 WHEN k1=3 AND k2=4 THEN 6 END  WHERE (k1=1 AND k2=2) OR "
        "(k1=3 AND k2=4) WHERE z = 0",
        "UPDATE t SET c=tmp.c,d=tmp.d FROM (VALUES (1, 2, 'a', 5) , (3, 4, 'b', 6) )  AS "
        "tmp(k1,k2,c,d) WHERE t.k1=tmp.k1 AND t.k2=tmp.k2 WHERE z = 0",
        "UPDATE t SE WHERE z = 0",
        "UPDATE t SET c=tmp.c,d=tmp.d FROM (VALUES (1, 2, 'a', 5) , (3, 4, 'b', 6) )  AS "
        "tmp(k1,k2,c,d) WHERE t.k1=tmp.k1 AND t.k2=tmp.k2 WHERE z = 0"}},
      {"batch columns without rows",
       [](vexel::UpdateBuilder& b) { b.BATCH_SET({c("c")}).BATCH_CONDITION({c("k")}); },
       {"UPDATE t SET c= CASE  END  WHERE k IN ()",
        "UPDATE t SET c=tmp.c FROM  AS tmp() WHERE t.k=tmp.k", "UPDATE t SE",
        "UPDATE t SET c=tmp.c FROM  AS tmp() WHERE t.k=tmp.k"}},
      {"multi-table after the plain assignments",
       [](vexel::UpdateBuilder& b) {
         b.SET(c("a"), v(0)).UNION_SET(c("x"), vexel::tab("s").col("y"));
         b.UNION_FROM({vexel::tab("s"), vexel::tab("r")});
         b.UNION_CONDITION(vexel::tab("t").col("id"), vexel::tab("s").col("id"));
         b.UNION_CONDITION(vexel::tab("s").col("r"), vexel::tab("r").col("id"));
       },
       {"UPDATE t SET a = 0, x=s.y FROM s,r WHERE t.id=s.id AND s.r=r.id", pg_union,
        "UPDATE t SET a = 0", pg_union}},
  };
  check(std::begin(cases), std::end(cases));
}

TEST(Update, BatchValuesRejectsBadInput) {
  const struct {
    const char* name;
    std::vector<vexel::col> cols;
    std::vector<std::vector<vexel::SQLValue>> rows;
    std::string line;
  } cases[] = {
      {"no rows", {c("k")}, {}, "tmp_values is empty"},
      {"no columns", {}, {{v(1)}}, "tmp_cols is empty"},
      {"first row too long",
       {c("k"), c("c")},
       {{v(1), v(2), v(3)}},
       "tmp_cols.size() is not equal to tmp_values[0].size()"},
  };
  for (const auto& tc : cases) {
    vexel::UpdateBuilder b(fake(2));
    b.UPDATE(vexel::tab("t")).BATCH_SET({c("c")}).BATCH_CONDITION({c("k")});
    const std::string before = b.tosql();
    CaptureLog log;
    b.BATCH_VALUES(tc.cols, tc.rows);
    EXPECT_EQ(b.tosql(), before) << tc.name;
    EXPECT_EQ(log.texts(),
              std::vector<std::string>{"5|[vexel::SQLUpdate::BATCH_VALUES]" + tc.line + ".["})
        << tc.name;
  }
}

// A second call adds columns but replaces the rows.
TEST(Update, BatchValuesAddsColumnsReplacesRows) {
  vexel::UpdateBuilder b(fake(2));
  b.UPDATE(vexel::tab("t")).BATCH_SET({c("c")}).BATCH_CONDITION({c("k")});
  b.BATCH_VALUES({c("k")}, {{v(1)}}).BATCH_VALUES({c("c")}, {{v(9)}, {v(8)}});
  EXPECT_EQ(b.tosql(),
            "UPDATE t SET c=tmp.c FROM (VALUES (9) , (8) )  AS tmp(k,c) WHERE t.k=tmp.k");
}

TEST(Update, ExecutionRoutesAndFailures) {
  vexel_test::check_routes(
      {
          {1, false, "ExecuteUpdate", "SQLiteUpdate", "UPDATE t SET a = 1"},
          {2, false, "ExecuteUpdate", "PGUpdate", "UPDATE t SET a = 1"},
          {3, false, "ExecuteUpdate", "SQLServerUpdate", "UPDATE t SET a = 1"},
          {7, false, "ExecuteUpdate", "PGUpdate", "UPDATE t SET a = 1"},
          {1, true, "ExecuteReturning", "SQLiteUpdate", "UPDATE t SET a = 1 RETURNING a"},
          {2, true, "ExecuteReturning", "PGUpdate", "UPDATE t SET a = 1 RETURNING a"},
          {3, true, "ExecuteReturning", "SQLServerUpdate", "UPDATE t SET a = 1 OUTPUT inserted.a"},
          {7, true, "ExecuteReturning", "PGUpdate", "UPDATE t SET a = 1 RETURNING a"},
      },
      [](const std::shared_ptr<vexel_test::FakeConnect>& conn, bool returning) {
        vexel::UpdateBuilder b(conn);
        b.UPDATE(vexel::tab("t")).SET(c("a"), v(1));
        if (returning) b.RETURNING({c("a")});
        return b.Execute();
      });
}

TEST(Update, MissingConnectionAndMissingDialectValue) {
  vexel::UpdateBuilder b(nullptr);
  CaptureLog log;
  b.UPDATE(vexel::tab("t"))
      .SET(c("a"), std::map<tessel::DBTYPE, vexel::SQLValue>{{tessel::DB_SQLITE, v(1)}});
  EXPECT_EQ(b.tosql(), "UPDATE t SE");
  EXPECT_FALSE(b.Execute());
  b.Reset();
  EXPECT_EQ(log.texts(), (std::vector<std::string>{
                             "5|[vexel::UpdateBuilder::SET]no value for db_type 2.[",
                             "5|[vexel::PGUpdate::Execute]db_conn_ is nullptr.[",
                             "6|[vexel::UpdateBuilder::Reset]db_conn is nullptr.[",
                         }));
}

TEST(Update, ResetAndCopies) {
  auto conn = fake(1);
  vexel::UpdateBuilder a(conn);
  a.UPDATE(vexel::tab("t")).SET(c("a"), v(1)).RETURNING({c("a")});
  vexel::UpdateBuilder copy(a);
  copy.SET(c("b"), v(2));
  EXPECT_EQ(a.tosql(), "UPDATE t SET a = 1 RETURNING a");
  EXPECT_EQ(copy.tosql(), "UPDATE t SET a = 1, b = 2 RETURNING a");
  vexel::UpdateBuilder shared(fake(2));
  shared = a;
  shared.SET(c("c"), v(3));
  EXPECT_EQ(a.tosql(), "UPDATE t SET a = 1, c = 3 RETURNING a");
  a.Reset();
  EXPECT_EQ(a.tosql(), "UPDATE  SE");
  a.UPDATE(vexel::tab("t")).SET(c("a"), v(1));
  EXPECT_TRUE(a.Execute());
  EXPECT_EQ(conn->statements(), std::vector<std::string>{"ExecuteUpdate:UPDATE t SET a = 1"});
}

}  // namespace
