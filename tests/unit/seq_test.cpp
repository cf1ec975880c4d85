// Sequence fragments and SeqenceBuilder: texts per dialect (SQL Server and
// unknown codes take the PostgreSQL forms), routes and failure lines.
#include <gtest/gtest.h>

#include <functional>

#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::fake;
using vexel_test::PerDialect;

vexel::tab qualified() { return vexel::sch("a").tab("t"); }

TEST(SeqenceExpr, FragmentsPerDialect) {
  const struct {
    const char* name;
    vexel::SeqenceExpr expr;
    PerDialect want;
  } cases[] = {
      {"current",
       vexel::CURRVAL(vexel::seq("a.s"), vexel::tab("t")),
       {"seq FROM sqlite_sequence WHERE name = 't'", "last_value FROM a.s", "", ""}},
      {"set",
       vexel::SETVAL(vexel::seq("a.s"), 0, vexel::tab("t")),
       {"sqlite_sequence SET seq = 0 WHERE name = 't'", "setval('a.s'::regclass, 0, true)", "",
        ""}},
  };
  for (const auto& tc : cases) {
    for (int code : vexel_test::kDialects) {
      EXPECT_EQ(tc.expr.GetExpr(vexel_test::db(code)), tc.want.at(code)) << tc.name << code;
    }
  }
}

struct SeqCase {
  const char* name;
  std::function<void(vexel::SeqenceBuilder&)> build;
  PerDialect next, set;
};

TEST(SeqenceBuilder, TextPerDialect) {
  const std::string pg_next = "SELECT nextval('a.s') AS seq";
  const SeqCase cases[] = {
      {"next takes the table's schema",
       [](vexel::SeqenceBuilder& b) { b.NEXT_VAL(vexel::seq("s"), qualified()); },
       {"SELECT seq FROM a.sqlite_sequence WHERE name = 't'", pg_next, pg_next, pg_next},
       vexel_test::all("")},
      {"qualified sequence used as given",
       [](vexel::SeqenceBuilder& b) { b.NEXT_VAL(vexel::seq("x.s"), vexel::tab("t")); },
       {"SELECT seq FROM sqlite_sequence WHERE name = 't'", "SELECT nextval('x.s') AS seq",
        "SELECT nextval('x.s') AS seq", "SELECT nextval('x.s') AS seq"},
       vexel_test::all("")},
      {"manual next reads the column's maximum",
       [](vexel::SeqenceBuilder& b) {
         b.MANUAL_NEXT_VAL(vexel::seq("s"), qualified(), vexel::col("id"));
       },
       {"SELECT max(id) FROM a.t", pg_next, pg_next, pg_next},
       vexel_test::all("")},
      {"set a value, zero included",
       [](vexel::SeqenceBuilder& b) { b.SET_VAL(vexel::seq("s"), 0, qualified()); },
       {"SELECT seq FROM a.sqlite_sequence WHERE name = 't'", "", "", ""},
       {"UPDATE sqlite_sequence SET seq = 0 WHERE name = 't'",
        "SELECT setval('a.s'::regclass, 0, true)", "SELECT setval('a.s'::regclass, 0, true)",
        "SELECT setval('a.s'::regclass, 0, true)"}},
      {"set from an aggregate, without regclass",
       [](vexel::SeqenceBuilder& b) {
         b.SET_VAL(vexel::seq("s"), vexel::MAX(vexel::col("id")), qualified());
       },
       {"SELECT seq FROM a.sqlite_sequence WHERE name = 't'", "", "", ""},
       {"UPDATE sqlite_sequence SET seq = (SELECT MAX(id) FROM a.t) WHERE name = 't'",
        "SELECT setval('a.s', MAX(id)) FROM a.t", "SELECT setval('a.s', MAX(id)) FROM a.t",
        "SELECT setval('a.s', MAX(id)) FROM a.t"}},
  };
  for (const auto& tc : cases) {
    for (int code : vexel_test::kDialects) {
      vexel::SeqenceBuilder b(fake(code));
      tc.build(b);
      EXPECT_EQ(b.tosql_next(), tc.next.at(code)) << tc.name << " / " << code;
      EXPECT_EQ(b.tosql_set(), tc.set.at(code)) << tc.name << " / " << code;
    }
  }
}

TEST(SeqenceBuilder, MissingSchemaWarns) {
  vexel::SeqenceBuilder b(fake(2));
  b.NEXT_VAL(vexel::seq("s"), vexel::tab("t")).SET_VAL(vexel::seq("s"), 3, vexel::tab("t"));
  CaptureLog log;
  EXPECT_EQ(b.tosql_next(), "SELECT nextval('s') AS seq");
  EXPECT_EQ(b.tosql_set(), "SELECT setval('s'::regclass, 3, true)");
  EXPECT_EQ(log.texts(), (std::vector<std::string>{
                             "4|[vexel::PGSeq::tosql_next]No found schema name.[",
                             "4|[vexel::PGSeq::tosql_set]No found schema name.[",
                         }));
}

TEST(SeqenceBuilder, ExecutionRoutes) {
  const struct {
    const char* name;
    int code;
    std::function<void(vexel::SeqenceBuilder&)> build;
    std::vector<std::string> want;  // "operation:statement"
  } cases[] = {
      {"pg set wins over next",
       2,
       [](vexel::SeqenceBuilder& b) {
         b.NEXT_VAL(vexel::seq("s"), qualified()).SET_VAL(vexel::seq("s"), 5, qualified());
       },
       {"ExecuteQuery:SELECT setval('a.s'::regclass, 5, true);"}},
      {"sql server uses the pg forms",
       3,
       [](vexel::SeqenceBuilder& b) { b.NEXT_VAL(vexel::seq("s"), qualified()); },
       {"ExecuteQuery:SELECT nextval('a.s') AS seq;"}},
      {"sqlite set, then read back",
       1,
       [](vexel::SeqenceBuilder& b) { b.SET_VAL(vexel::seq("s"), 5, vexel::tab("t")); },
       {"ExecuteUpdate:UPDATE sqlite_sequence SET seq = 5 WHERE name = 't';",
        "ExecuteQuery:SELECT seq  FROM sqlite_sequence WHERE name = 't';"}},
      {"sqlite next",
       1,
       [](vexel::SeqenceBuilder& b) { b.NEXT_VAL(vexel::seq("s"), vexel::tab("t")); },
       {"SeqenceExecute:SELECT seq FROM sqlite_sequence WHERE name = 't';"}},
      {"sqlite manual next",
       1,
       [](vexel::SeqenceBuilder& b) {
         b.MANUAL_NEXT_VAL(vexel::seq("s"), vexel::tab("t"), vexel::col("id"));
       },
       {"SeqenceExecuteManual:SELECT max(id) FROM t;"}},
  };
  for (const auto& tc : cases) {
    auto conn = fake(tc.code);
    vexel::SeqenceBuilder b(conn);
    tc.build(b);
    EXPECT_TRUE(b.Execute()) << tc.name;
    EXPECT_EQ(conn->statements(), tc.want) << tc.name;
  }
}

TEST(SeqenceBuilder, FailureLines) {
  const std::string tail = " failed errorcode:42.error_info:boom,sql:";
  const struct {
    int code;
    const char* fail_op;
    bool manual;
    bool set;
    std::string want;
  } cases[] = {
      {2, "ExecuteQuery", false, false,
       "5|[vexel::PGSeq::Execute]ExecuteQuery" + tail + "SELECT nextval('a.s') AS seq;.["},
      {1, "ExecuteUpdate", false, true,
       "5|[vexel::SQLiteSeq::Execute]Execute" + tail +
           "UPDATE sqlite_sequence SET seq = 1 WHERE name = 't';.["},
      {1, "ExecuteQuery", false, true,
       "5|[vexel::SQLiteSeq::Execute]ExecuteQuery" + tail +
           "SELECT seq  FROM sqlite_sequence WHERE name = 't';.["},
      {1, "SeqenceExecute", false, false,
       "5|[vexel::SQLiteSeq::Execute]SeqenceExecute" + tail +
           "SELECT seq FROM a.sqlite_sequence WHERE name = 't';.["},
      {1, "SeqenceExecuteManual", true, false,
       "5|[vexel::SQLiteSeq::Execute]SeqenceExecuteManual" + tail + "SELECT max(id) FROM a.t;.["},
  };
  for (const auto& tc : cases) {
    auto conn = fake(tc.code);
    conn->FailOn(tc.fail_op);
    vexel::SeqenceBuilder b(conn);
    if (tc.manual) {
      b.MANUAL_NEXT_VAL(vexel::seq("s"), qualified(), vexel::col("id"));
    } else {
      b.NEXT_VAL(vexel::seq("s"), qualified());
    }
    if (tc.set) b.SET_VAL(vexel::seq("s"), 1, qualified());
    CaptureLog log;
    EXPECT_FALSE(b.Execute()) << tc.want;
    EXPECT_EQ(log.texts(), std::vector<std::string>{tc.want});
  }
}

TEST(SeqenceBuilder, MissingConnection) {
  vexel::SeqenceBuilder b(nullptr);
  b.NEXT_VAL(vexel::seq("s"), qualified());
  CaptureLog log;
  EXPECT_FALSE(b.Execute());
  EXPECT_EQ(log.texts(),
            std::vector<std::string>{"5|[vexel::PGSeq::Execute]db_conn_ is nullptr.["});
  vexel::SeqenceBuilder copy(b);
  EXPECT_EQ(copy.tosql_next(), "SELECT nextval('a.s') AS seq");
}

}  // namespace
