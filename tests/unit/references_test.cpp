// Qualified names and column modifiers: what a reference renders, per
// dialect, including the texts hosts depend on ("s..f", "t. DISTINCT c").
#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::kDialects;
using vexel_test::PerDialect;

struct RefCase {
  const char* name;
  std::function<std::string(tessel::DBTYPE)> render;
  PerDialect expected;
};

vexel::col qualified(tessel::DBTYPE d) {
  vexel::sch s("s");
  s.set_db_type(d);
  return s.tab("t").col("c");
}

const RefCase kRefCases[] = {
    {"plain column",
     [](tessel::DBTYPE d) { return qualified(d).col_name(); },
     {"t.c", "s.t.c", "s.t.c", "s.t.c"}},
    {"bare column", [](tessel::DBTYPE d) { return vexel::col(vexel::col("c"), d).col_name(); },
     vexel_test::all("c")},
    {"default column", [](tessel::DBTYPE d) { return vexel::col(vexel::col(), d).col_name(); },
     vexel_test::all("")},
    {"excluded",
     [](tessel::DBTYPE d) { return qualified(d).EXCLUDED().col_name(); },
     {"EXCLUDED.t.c", "EXCLUDED.s.t.c", "EXCLUDED.s.t.c", "EXCLUDED.s.t.c"}},
    {"GetExpr keeps the schema",
     [](tessel::DBTYPE d) { return qualified(tessel::DB_POSTGRESQL).GetExpr(d); },
     vexel_test::all("s.t.c")},
    {"table keeps its schema",
     [](tessel::DBTYPE d) {
       vexel::tab t = vexel::sch("s").tab("t");
       t.set_db_type(d);
       return t.table_name();
     },
     vexel_test::all("s.t")},
    {"view drops its schema on SQLite",
     [](tessel::DBTYPE d) {
       vexel::view v = vexel::sch("s").view("v");
       v.set_db_type(d);
       return v.view_name();
     },
     {"v", "s.v", "s.v", "s.v"}},
    {"function in a schema",
     [](tessel::DBTYPE d) {
       vexel::sch s("s");
       s.set_db_type(d);
       return s.func("f").col_name();
     },
     {"f", "s..f", "s..f", "s..f"}},
    {"function without schema",
     [](tessel::DBTYPE d) {
       vexel::func f("now");
       f.set_db_type(d);
       return f.col_name();
     },
     {"now", ".now", ".now", ".now"}},
    {"function copied into a column",
     [](tessel::DBTYPE d) {
       vexel::sch s("s");
       return vexel::col(s.func("f"), d).col_name();
     },
     {"f", "s.f", "s.f", "s.f"}},
    {"unqualified function copied into a column",
     [](tessel::DBTYPE d) { return vexel::col(vexel::func("now"), d).col_name(); },
     vexel_test::all("")},
    {"function GetExpr decides by argument",
     [](tessel::DBTYPE d) { return vexel::col(vexel::sch("s").func("f")).GetExpr(d); },
     {"f", "s.f", "s.f", "s.f"}},
};

TEST(References, RenderPerDialect) {
  for (const RefCase& c : kRefCases) {
    for (int code : kDialects) {
      EXPECT_EQ(c.render(db(code)), c.expected.at(code)) << c.name << " in dialect " << code;
    }
  }
}

// Modifiers do not depend on the dialect; they edit the column text.
TEST(References, Modifiers) {
  const vexel::col c = vexel::tab("t").col("c");
  const struct {
    const char* name;
    std::string got;
    std::string want;
  } cases[] = {
      {"AS", vexel::col(c).AS("x").col_name(), "t.c AS x"},
      {"AS empty still appends", vexel::col("c").AS("").col_name(), "c AS "},
      {"DISTINCT inside the qualifier", vexel::col(c).DISTINCT().col_name(), "t. DISTINCT c"},
      {"increase", vexel::col(c).increase(vexel::SQLValue(1)).col_name(), "t.c + 1"},
      {"increase twice",
       vexel::col("c").increase(vexel::SQLValue(1)).increase(vexel::SQLValue(1)).col_name(),
       "c + 1 + 1"},
      {"decrease", vexel::col("c").decrease(vexel::SQLValue(2.5)).col_name(), "c - 2.500000"},
      {"column plus itself",
       [] {
         vexel::col x("c");
         return x + vexel::col("c");
       }()
           .col_name(),
       "c + c"},
      {"minus column", (vexel::col("a") - vexel::col("b")).col_name(), "a - b"},
      {"to_order plain", vexel::col(c).to_order(), "t.c"},
      {"DESC NULLS LAST", vexel::col(c).DESC().NullsLast().to_order(), "t.c DESC  NULLS LAST "},
      {"ASC then DESC", vexel::col("c").ASC().DESC().only_order_sql(), " DESC "},
      {"nulls accumulate", vexel::col("c").NullsFirst().NullsLast().only_order_sql(),
       " NULLS FIRST  NULLS LAST "},
  };
  for (const auto& k : cases) EXPECT_EQ(k.got, k.want) << k.name;
}

TEST(References, SchemaAndAliasRules) {
  vexel::tab t = vexel::sch("s").tab("t");
  t.set_schema_name("");
  EXPECT_EQ(t.table_name(), "s.t") << "an empty schema keeps the table's";
  vexel::view v = vexel::sch("s").view("v");
  v.set_schema_name("");
  EXPECT_EQ(v.view_name(), "v") << "a view takes even an empty schema";
  EXPECT_EQ(vexel::sch().view(vexel::sch("s").view("v")).view_name(), "v");
  EXPECT_EQ(vexel::sch().tab("t").table_name(), "t");
  EXPECT_EQ(vexel::tab("t").AS("").table_name(), "t");
  EXPECT_EQ(vexel::sch("s").tab("t").AS("x").AS("y").table_name(), "s.t AS x AS y");
  // The alias is part of the qualifier: columns taken afterwards carry it.
  EXPECT_EQ(vexel::sch("s").tab("t").AS("x").col("c").col_name(), "s.t AS x.c");
  vexel::col c("c");
  c.set_schema_name("s");
  c.set_schema_name("");
  c.set_table_name("");
  EXPECT_EQ(c.col_name(), "s.c");
}

TEST(References, FuncCopyDropsExcluded) {
  vexel::func f = vexel::sch("s").func("f");
  f.EXCLUDED();
  vexel::func copy(f);
  EXPECT_EQ(copy.col_type(), vexel::ColumnFunction);
  EXPECT_EQ(copy.col_name(), "s..f");
}

TEST(References, OrderedByRenderedText) {
  std::map<vexel::col, int> by_col;
  by_col[vexel::col("b")] = 2;
  by_col[vexel::col("a")] = 1;
  by_col[vexel::tab("t").col("a")] = 3;
  ASSERT_EQ(by_col.size(), 3u);
  EXPECT_EQ(by_col.begin()->first.col_name(), "a");
  EXPECT_EQ(by_col.rbegin()->first.col_name(), "t.a");
}

TEST(References, NullCStringsAreEmpty) {
  const char* none = nullptr;
  EXPECT_EQ(vexel::col(none).col_name(), "");
  EXPECT_EQ(vexel::tab(none).AS(none).table_name(), "");
  EXPECT_EQ(vexel::sch(none).func(none).col_name(), ".");
  EXPECT_EQ(vexel::seq(none).seq_name(), "");
}

}  // namespace
