// Array columns: native arrays on PostgreSQL, JSON array text on SQLite,
// and the PostgreSQL text (with its missing integer cast) elsewhere.
#include <gtest/gtest.h>

#include <functional>

#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using vexel_test::db;
using vexel_test::fake;
using vexel_test::kDialects;
using vexel_test::PerDialect;

struct ArrayCase {
  const char* name;
  std::function<std::string(tessel::DBTYPE)> render;
  PerDialect expected;
};

// Column "tags" of table "t" in schema "s": the nodes take the bare name and
// the table qualifier, never the schema.
vexel::array_col tags() { return vexel::sch("s").tab("t").array_col("tags"); }

template <typename Node>
std::function<std::string(tessel::DBTYPE)> render(Node node) {
  return [node](tessel::DBTYPE d) { return node.GetExpr(d); };
}

void check(const ArrayCase& k) {
  for (int code : kDialects) {
    EXPECT_EQ(k.render(db(code)), k.expected.at(code)) << k.name << " @" << code;
  }
}

const std::string kContains12 =
    "EXISTS (SELECT 1 WHERE( SELECT SUM(CASE WHEN value in (1,2) THEN 1 ELSE 0 END)=2 FROM "
    "(SELECT distinct value from t,json_each(tags)) as value))";

TEST(ArrayCol, Contains) {
  const std::string pg_ints = "tags @> ARRAY[1,2]::INTEGER[]";
  const std::string pg_strings = "tags @> ARRAY['a','b']::VARCHAR[]";
  const ArrayCase cases[] = {
      {"integers", render(tags().contains({1, 2})), {kContains12, pg_ints, pg_ints, pg_ints}},
      {"strings",
       render(tags().contains({"a", "b"})),
       {"EXISTS (SELECT 1 WHERE( SELECT SUM(CASE WHEN value in ('a','b') THEN 1 ELSE 0 END)=2 "
        "FROM (SELECT distinct value from t,json_each(tags)) as value))",
        pg_strings, pg_strings, pg_strings}},
      // The count is the number of values given, duplicates included.
      {"duplicates count twice",
       render(tags().contains(std::vector<int>{1, 1})),
       {"EXISTS (SELECT 1 WHERE( SELECT SUM(CASE WHEN value in (1,1) THEN 1 ELSE 0 END)=2 FROM "
        "(SELECT distinct value from t,json_each(tags)) as value))",
        "tags @> ARRAY[1,1]::INTEGER[]", "tags @> ARRAY[1,1]::INTEGER[]",
        "tags @> ARRAY[1,1]::INTEGER[]"}},
      {"empty list",
       render(tags().contains(std::vector<int>{})),
       {"EXISTS (SELECT 1 WHERE( SELECT SUM(CASE WHEN value in () THEN 1 ELSE 0 END)=0 FROM "
        "(SELECT distinct value from t,json_each(tags)) as value))",
        "tags @> ARRAY[]::INTEGER[]", "tags @> ARRAY[]::INTEGER[]", "tags @> ARRAY[]::INTEGER[]"}},
  };
  for (const auto& k : cases) check(k);
}

TEST(ArrayCol, Overlap) {
  const std::string sqlite_ints =
      "EXISTS (SELECT value FROM (SELECT value from t,json_each(tags)) as value WHERE value "
      "in(1,2))";
  // The parenthesised string list is joined by ", ", the bracketed one by ",".
  const std::string sqlite_strings =
      "EXISTS (SELECT value FROM (SELECT value from t,json_each(tags)) as value WHERE value "
      "in('a', 'b'))";
  const std::string strings = "tags && ARRAY['a','b']::VARCHAR[]";
  const ArrayCase cases[] = {
      // Integers lose their cast outside PostgreSQL.
      {"integers",
       render(tags() & std::vector<int>{1, 2}),
       {sqlite_ints, "tags && ARRAY[1,2]::INTEGER[]", "tags && ARRAY[1,2]", "tags && ARRAY[1,2]"}},
      {"strings",
       render(tags() & std::vector<std::string>{"a", "b"}),
       {sqlite_strings, strings, strings, strings}},
      {"braced lists",
       render(tags().operator&({"a", "b"})),
       {sqlite_strings, strings, strings, strings}},
      {"one integer",
       render(tags().operator&({1})),
       {"EXISTS (SELECT value FROM (SELECT value from t,json_each(tags)) as value WHERE value "
        "in(1))",
        "tags && ARRAY[1]::INTEGER[]", "tags && ARRAY[1]", "tags && ARRAY[1]"}},
  };
  for (const auto& k : cases) check(k);
}

TEST(ArrayCol, ElementsAndAny) {
  const ArrayCase cases[] = {
      // The index is written as given: no shift between SQLite's zero-based
      // path and PostgreSQL's one-based subscript.
      // The column text is taken when built, in the column's own dialect.
      {"element",
       render(tags()[2]),
       {"s.t.tags->>$.2", "s.t.tags[2]", "s.t.tags[2]", "s.t.tags[2]"}},
      {"element of a column without table",
       render(vexel::array_col("tags")[0]),
       {"tags->>$.0", "tags[0]", "tags[0]", "tags[0]"}},
      {"sub_array_col",
       render(vexel::sub_array_col("x.y", -1)),
       {"x.y->>$.-1", "x.y[-1]", "x.y[-1]", "x.y[-1]"}},
      {"= ANY",
       render(vexel::SQLValue(3) == vexel::ANY(tags())),
       {"( SELECT value FROM t,json_each(tags)) in (3)", "3=ANY(tags)", "3=ANY(tags)",
        "3=ANY(tags)"}},
      {"= ANY with a string",
       render(vexel::SQLValue("a") == vexel::ANY(tags())),
       {"( SELECT value FROM t,json_each(tags)) in ('a')", "'a'=ANY(tags)", "'a'=ANY(tags)",
        "'a'=ANY(tags)"}},
  };
  for (const auto& k : cases) check(k);
}

TEST(ArrayCol, Literals) {
  const ArrayCase cases[] = {
      {"integers",
       render(vexel::ArrayValue(std::vector<int>{1, 2})),
       {"json_array(1,2)", "ARRAY[1,2]::INTEGER[]", "ARRAY[1,2]::INTEGER[]",
        "ARRAY[1,2]::INTEGER[]"}},
      {"strings in double quotes",
       render(vexel::ArrayValue(std::vector<std::string>{"a", "b"})),
       {"json_array(\"a\",\"b\")", "ARRAY[\"a\",\"b\"]::VARCHAR[]", "ARRAY[\"a\",\"b\"]::VARCHAR[]",
        "ARRAY[\"a\",\"b\"]::VARCHAR[]"}},
      {"empty", render(vexel::ArrayValue(std::vector<int>{})), vexel_test::all("")},
      {"integers from text",
       render(vexel::string_to_array(vexel::ArrayOfInteger, "1;2", ';')),
       {"json_array(1,2)", "string_to_array('1;2',';')::INTEGER[]",
        "string_to_array('1;2',';')::INTEGER[]", "string_to_array('1;2',';')::INTEGER[]"}},
      // The string form has a blank after the parenthesis.
      {"strings from text",
       render(vexel::string_to_array(vexel::ArrayOfString, "a,b", ',')),
       {"json_array(\"a\",\"b\")", "string_to_array( 'a,b',',')::VARCHAR[]",
        "string_to_array( 'a,b',',')::VARCHAR[]", "string_to_array( 'a,b',',')::VARCHAR[]"}},
      {"unknown element type",
       render(vexel::string_to_array(static_cast<vexel::array_type>(3), "1", ',')),
       vexel_test::all("")},
  };
  for (const auto& k : cases) check(k);
}

// The SQLite split: empty and non-numeric pieces are left out of an integer
// array; string pieces are kept as they are, empty ones included.
TEST(ArrayCol, SqliteSplitEdges) {
  const struct {
    vexel::array_type type;
    const char* text;
    const char* want;
  } cases[] = {
      {vexel::ArrayOfInteger, "", "json_array()"},
      {vexel::ArrayOfInteger, "1;;x;-3;", "json_array(1,-3)"},
      {vexel::ArrayOfInteger, "99999999999;7", "json_array(7)"},
      {vexel::ArrayOfString, "", "json_array()"},
      {vexel::ArrayOfString, "a;;b;", "json_array(\"a\",\"\",\"b\",\"\")"},
  };
  for (const auto& k : cases) {
    EXPECT_EQ(vexel::string_to_array(k.type, k.text, ';').GetExpr(tessel::DB_SQLITE), k.want)
        << k.text;
  }
}

TEST(ArrayCol, QualifiedLikeColumns) {
  vexel::sch s("s");
  s.set_db_type(tessel::DB_SQLITE);
  const vexel::array_col from_tab = s.tab("t").array_col("a");
  const vexel::array_col from_view = s.view("v").array_col(std::string("a"));
  EXPECT_EQ(from_tab.col_name(), s.tab("t").col("a").col_name());
  EXPECT_EQ(from_tab.only_schema_name(), "s");
  EXPECT_EQ(from_tab.db_type(), tessel::DB_SQLITE);
  EXPECT_EQ(from_view.only_table_name(), "v");
  EXPECT_EQ(from_view.only_schema_name(), "s");
}

TEST(ArrayCol, InsideAStatement) {
  const PerDialect expected = {
      "SELECT id FROM t WHERE (" + kContains12 + " AND t.tags->>$.0)",
      "SELECT id FROM t WHERE (tags @> ARRAY[1,2]::INTEGER[] AND t.tags[0])",
      "SELECT id FROM t WHERE (tags @> ARRAY[1,2]::INTEGER[] AND t.tags[0])",
      "SELECT id FROM t WHERE (tags @> ARRAY[1,2]::INTEGER[] AND t.tags[0])",
  };
  const vexel::array_col a = vexel::tab("t").array_col("tags");
  for (int code : kDialects) {
    vexel::QueryBuilder q(fake(code));
    q.SELECT({vexel::col("id")}).FROM(vexel::tab("t")).WHERE(a.contains({1, 2}).AND(a[0]));
    EXPECT_EQ(q.tosql(), expected.at(code)) << code;
  }
}

}  // namespace
