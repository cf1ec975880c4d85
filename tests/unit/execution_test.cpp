// Which connection operation each execution form reaches, with or without
// ";", and the exact failure line, per dialect.
#include <gtest/gtest.h>

#include <functional>

#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::CaptureLog;
using vexel_test::fake;

struct Route {
  const char* op;     // connection operation reached
  const char* sql;    // text passed
  const char* extra;  // time-out or collation passed along
  const char* line;   // failure line, after "[<class>::<operation>]"
};

struct VariantCase {
  const char* name;
  const char* operation;  // the implementation operation named in the log
  std::function<bool(vexel::QueryBuilder&)> run;
  bool from_public_view;
  Route sqlite, postgres, sqlserver;
  const Route& at(int code) const { return code == 1 ? sqlite : code == 3 ? sqlserver : postgres; }
};

const VariantCase kVariants[] = {
    {"plain",
     "Execute",
     [](vexel::QueryBuilder& q) { return q.Execute(); },
     false,
     {"ExecuteQuery", "SELECT a FROM v;", "",
      "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT a FROM v;.["},
     {"ExecuteQuery", "SELECT a FROM s.v;", "",
      "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT a FROM s.v;.["},
     {"ExecuteQuery", "SELECT a FROM s.v", "",
      "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT a FROM s.v.["}},
    {"view-aware",
     "ExecuteQueryContainView",
     [](vexel::QueryBuilder& q) { return q.Execute(); },
     true,
     {"ExecuteQueryContainView", "SELECT a FROM v;", "",
      "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT a FROM v;.["},
     {"ExecuteQueryContainView", "SELECT a FROM public.v;", "",
      "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT a FROM public.v;.["},
     {"ExecuteQueryContainView", "SELECT a FROM public.v", "",
      "ExecuteQuery failed errorcode:42.error_info:boom,sql:SELECT a FROM public.v.["}},
    {"time-out",
     "ExecuteQueryUDT",
     [](vexel::QueryBuilder& q) { return q.ExecuteQueryUDT(30); },
     false,
     {"ExecuteQuery", "SELECT a FROM v", "",
      "ExecuteQueryUDT failed,time_out:30, errorcode:42.error_info:boom,sql:SELECT a FROM v.["},
     {"ExecuteQueryUDT", "SELECT a FROM s.v", "30",
      "ExecuteQueryUDT failed,time_out:30, errorcode:42.error_info:boom,sql:SELECT a FROM s.v.["},
     {"ExecuteQuery", "SELECT a FROM s.v", "",
      "ExecuteQueryUDT failed,time_out:30, errorcode:42.error_info:boom,sql:SELECT a FROM s.v.["}},
    {"collation",
     "ExecuteSortByCollate",
     [](vexel::QueryBuilder& q) { return q.ExecuteSortByCollate("C"); },
     false,
     {"ExecuteQuery", "SELECT a FROM v", "",
      "ExecuteQueryUDT failed,collate_name:C, errorcode:42.error_info:boom,sql:SELECT a FROM v.["},
     {"ExecuteSortByCollate", "SELECT a FROM s.v", "C",
      "ExecuteQueryUDT failed,collate_name:C, errorcode:42.error_info:boom,sql:SELECT a FROM "
      "s.v.["},
     {"ExecuteQuery", "SELECT a FROM s.v", "",
      "ExecuteQueryUDT failed,collate_name:C, errorcode:42.error_info:boom,sql:SELECT a FROM "
      "s.v.["}},
    {"loop",
     "ExecuteLoop",
     [](vexel::QueryBuilder& q) { return q.ExecuteLoop(); },
     false,
     {"ExecuteQuery", "SELECT a FROM v", "",
      "ExecuteQueryUDT failed,errorcode:42.error_info:boom,sql:SELECT a FROM v.["},
     {"ExecuteLoop", "SELECT a FROM s.v", "",
      "ExecuteQueryUDT failed,errorcode:42.error_info:boom,sql:SELECT a FROM s.v.["},
     {"ExecuteQuery", "SELECT a FROM s.v", "",
      "ExecuteQueryUDT failed,errorcode:42.error_info:boom,sql:SELECT a FROM s.v.["}},
};

const char* class_name(int code) {
  return code == 1 ? "SQLiteQuery" : code == 3 ? "SQLServerQuery" : "PGQuery";
}

TEST(Execution, RoutingPerDialect) {
  for (const VariantCase& v : kVariants) {
    for (int code : vexel_test::kDialects) {
      SCOPED_TRACE(std::string(v.name) + " in dialect " + std::to_string(code));
      const Route& want = v.at(code);
      auto conn = fake(code);
      vexel::QueryBuilder q(conn);
      q.SELECT({vexel::col("a")}).FROM(vexel::sch(v.from_public_view ? "public" : "s").view("v"));
      conn->clear();
      ASSERT_TRUE(v.run(q));
      ASSERT_EQ(conn->calls().size(), 1u);
      EXPECT_EQ(conn->calls()[0].op, want.op);
      EXPECT_EQ(conn->calls()[0].sql, want.sql);
      EXPECT_EQ(conn->calls()[0].extra, want.extra);

      conn->FailOn(want.op);
      conn->clear();
      CaptureLog log;
      EXPECT_FALSE(v.run(q));
      EXPECT_EQ(conn->count("GetLastError"), 1);
      EXPECT_EQ(log.texts(), std::vector<std::string>{"5|[vexel::" + std::string(class_name(code)) +
                                                      "::" + v.operation + "]" + want.line});
    }
  }
}

TEST(Execution, PublicViewFlag) {
  const struct {
    const char* name;
    std::function<void(vexel::QueryBuilder&, vexel::QueryBuilder&)> build;
    const char* op;
  } cases[] = {
      {"FROM a public view",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder&) { q.FROM(vexel::sch("public").view("v")); },
       "ExecuteQueryContainView"},
      {"a later FROM keeps the mark",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder&) {
         q.FROM(vexel::sch("public").view("v")).FROM(vexel::tab("t"));
       },
       "ExecuteQueryContainView"},
      {"other schema",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder&) { q.FROM(vexel::sch("Public").view("v")); },
       "ExecuteQuery"},
      {"public table",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder&) { q.FROM(vexel::sch("public").tab("t")); },
       "ExecuteQuery"},
      {"JOIN of a public view",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder&) {
         q.FROM(vexel::tab("t")).JOIN(vexel::sch("public").view("v"));
       },
       "ExecuteQuery"},
      {"subquery in FROM that read one",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder& s) {
         q.FROM(s.FROM(vexel::sch("public").view("v")), "x");
       },
       "ExecuteQueryContainView"},
      {"subquery in JOIN that read one",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder& s) {
         q.FROM(vexel::tab("t")).JOIN(s.FROM(vexel::sch("public").view("v")), "x");
       },
       "ExecuteQueryContainView"},
      {"set operand that read one",
       [](vexel::QueryBuilder& q, vexel::QueryBuilder& s) {
         q.FROM(vexel::tab("t")).UNION(s.FROM(vexel::sch("public").view("v")));
       },
       "ExecuteQuery"},
  };
  for (const auto& c : cases) {
    auto conn = fake(2);
    vexel::QueryBuilder q(conn);
    vexel::QueryBuilder s(fake(2));
    c.build(q, s);
    conn->clear();
    EXPECT_TRUE(q.Execute());
    ASSERT_EQ(conn->calls().size(), 1u) << c.name;
    EXPECT_EQ(conn->calls()[0].op, c.op) << c.name;
  }
}

TEST(Execution, FailureLeavesTheStatement) {
  auto conn = fake(2);
  vexel::QueryBuilder q(conn);
  q.SELECT({vexel::col("a")}).FROM(vexel::tab("t"));
  conn->FailOn("ExecuteQuery");
  CaptureLog log;
  EXPECT_FALSE(q.Execute());
  conn->Succeed("ExecuteQuery");
  EXPECT_TRUE(q.Execute());
  EXPECT_EQ(conn->statements(), (std::vector<std::string>{"ExecuteQuery:SELECT a FROM t;",
                                                          "ExecuteQuery:SELECT a FROM t;"}));
}

}  // namespace
