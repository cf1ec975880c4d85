// Expression texts hosts match, blanks included, for SQLite (1), PostgreSQL
// (2), SQL Server (3) and an unknown code (7) that takes the fallback branches.
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <map>
#include <regex>
#include <type_traits>

#include "internal/Log.h"
#include "support/CaptureLog.h"
#include "support/Dialects.h"
#include "vexel/vexel.h"

namespace {

using namespace vexel;  // NOLINT(google-build-using-namespace): the tables read as host code
using DB = tessel::DBTYPE;
using vexel_test::all;
using vexel_test::db;
using vexel_test::kDialects;
using vexel_test::PerDialect;

// Expected texts for codes 1, 2, 3 and 7; one text when they agree.
struct Want : PerDialect {
  Want(const char* text) : PerDialect(all(text)) {}
  Want(PerDialect p) : PerDialect(std::move(p)) {}
  Want(std::string a, std::string b, std::string c, std::string d) : PerDialect{a, b, c, d} {}
};

// SQLite's and PostgreSQL's texts; `others` for SQL Server and code 7.
Want texts(const std::string& sqlite, const std::string& postgres, const std::string& others = "") {
  return {sqlite, postgres, others, others};
}
Want lite_pg(const std::string& sqlite, const std::string& postgres) {
  return texts(sqlite, postgres, postgres);
}

// One setup and its expected texts: a node rendered with the dialect under
// test, a column copied into it as builders do, a function of the dialect, a
// text fixed by the setup, or the entry for the dialect of a per-dialect map.
struct Row {
  template <typename Node, typename = std::enable_if_t<std::is_base_of<CommonExpr, Node>::value>>
  Row(Node n, Want w) : Row([n](DB d) { return n.GetExpr(d); }, std::move(w)) {}
  Row(std::function<std::string(DB)> f, Want w) : render(std::move(f)), want(std::move(w)) {}
  Row(col c, Want w) : Row([c](DB d) { return col(c, d).col_name(); }, std::move(w)) {}
  Row(std::string text, Want w) : Row([text](DB) { return text; }, std::move(w)) {}
  Row(std::map<DB, SQLValue> m, Want w)
      : Row([m](DB d) { return m.count(d) ? m.at(d).GetValue() : ""; }, std::move(w)) {}
  std::function<std::string(DB)> render;
  Want want;
};

void check(std::initializer_list<Row> rows) {
  for (const Row& r : rows) {
    for (int code : kDialects) EXPECT_EQ(r.render(db(code)), r.want.at(code)) << "@" << code;
  }
}

template <typename Node>
std::shared_ptr<CommonExpr> p(Node n) {
  return std::make_shared<Node>(n);
}

Ptr_CommonExpr cond(const char* text) { return Ptr_CommonExpr(p(SQLExpr(text))); }

// A schema in the dialect under test; what it makes carries that dialect.
sch schema(DB d, const char* name = "s") {
  sch s(name);
  s.set_db_type(d);
  return s;
}

TEST(ExprRefs, NamesPerDialect) {
  const col c = sch("s").tab("t").col("c");
  check({
      {[](DB d) { return schema(d).tab("t").col("c").col_name(); }, lite_pg("t.c", "s.t.c")},
      {[](DB d) { return schema(d).view("v").col("c").col_name(); }, lite_pg("v.c", "s.v.c")},
      {col(c).EXCLUDED(), lite_pg("EXCLUDED.t.c", "EXCLUDED.s.t.c")},
      {[c](DB d) { return col(c, d).GetExpr(d); }, "s.t.c"},
      // The alias is part of the qualifier: take columns before aliasing.
      {sch("s").tab("t").AS("x").col("c"), lite_pg("t AS x.c", "s.t AS x.c")},
      {[](DB d) { return schema(d).tab("t").table_name(); }, "s.t"},
      {[](DB d) { return schema(d).view("v").view_name(); }, lite_pg("v", "s.v")},
      // The doubled dot is what hosts match.
      {[](DB d) { return schema(d).func("f").col_name(); }, lite_pg("f", "s..f")},
      {[](DB d) { return schema(d, "").func("now").col_name(); }, lite_pg("now", ".now")},
      // Select lists copy functions into plain columns; unqualified ones vanish.
      {sch("s").func("f"), lite_pg("f", "s.f")},
      {func("now"), ""},
      {[](DB d) { return col(sch("s").func("f")).GetExpr(d); }, lite_pg("f", "s.f")},
      {[](DB d) { return col(NOW(1), d).col_name(); },
       texts("DATETIME('now','localtime')", "now()")},
  });
}

// Modifiers edit the receiver in place; a copy taken before keeps its text.
TEST(ExprRefs, ModifiersAndSchemaRules) {
  const col c = tab("t").col("c");
  col x("c"), a("c"), full = sch("s").tab("t").col("c");
  a.AS("x").DESC();
  full.EXCLUDED().ASC();
  tab t = sch("s").tab("t"), t2 = t;
  t2.AS("y").set_schema_name("");  // an empty schema keeps the table's
  view v = sch("s").view("v");
  v.set_schema_name("");  // a view takes even an empty one
  func excluded = sch("s").func("f");
  excluded.EXCLUDED();
  col plain = func(excluded);  // a function copy drops EXCLUDED
  plain.set_col_type(ColumnPlain);
  const char* none = nullptr;
  check({
      {col(c).AS("x").col_name(), "t.c AS x"},
      {col("c").AS("").col_name(), "c AS "},
      {col(c).DISTINCT().col_name(), "t. DISTINCT c"},
      {(x + x).col_name(), "c + c"},
      {col("c").increase(SQLValue(1)).decrease(SQLValue(2.5)).col_name(), "c + 1 - 2.500000"},
      {(col("a") + c - col("b") + SQLValue(1) - SQLValue(2)).col_name(), "a + t.c - b + 1 - 2"},
      {c.to_order(), "t.c"},
      {col(c).DESC().NullsLast().to_order(), "t.c DESC  NULLS LAST "},
      {col("c").ASC().NullsFirst().NullsLast().to_order(), "c ASC  NULLS FIRST  NULLS LAST "},
      {col("c").NullsFirst().ASC().DESC().to_order(), "c DESC "},
      {a.to_order() + "|" + col(full, db(1)).to_order(), "c AS x DESC |EXCLUDED.t.c ASC "},
      {t.table_name() + "|" + t2.table_name(), "s.t|s.t AS y"},
      {tab("t").AS("").AS("x").AS("y").table_name(), "t AS x AS y"},
      {v.view_name() + "|" + sch().view(sch("s").view("v")).view_name(), "v|v"},
      {sch().tab("t").table_name() + "|" + plain.col_name(), "t|s.f"},
      {col(none).col_name() + tab(none).AS(none).table_name() + sch(none).func(none).col_name() +
           seq(none).seq_name(),
       "."},
  });
  // Columns order by their rendered text, so they can key a map.
  EXPECT_TRUE(col("a") < col("b"));
  EXPECT_FALSE(col("a") < col("a"));
  EXPECT_FALSE(tab("t").col("a") < col("b"));
}

TEST(ExprValues, FixedTexts) {
  const auto n = p(SQLExpr("x > 1"));
  check({
      {SQLValue(), ""},
      {SQLValue(short{-5}), "-5"},
      {SQLValue(static_cast<unsigned short>(65535)), "65535"},
      {SQLValue(4294967295U), "4294967295"},
      {SQLValue(-1LL), "-1"},
      {SQLValue(18446744073709551615ULL), "18446744073709551615"},
      {SQLValue(0.1f), "0.100000"},
      {SQLValue(100000000.0), "100000000.000000"},
      {SQLValue(std::string("")), "''"},
      {SQLValue("it's"), "'it's'"},  // never escaped: callers escape first
      {SQLValue(SQLFunc{"now()"}), "now()"},
      {SQLValue(SQLValue(3), db(1)), "3"},
      {SQLValue(*n, db(1)), "x > 1"},
      {SQLValue(SQLExpr("NULL")), "NULL"},
      {SQLExpr(SQLValue("v")), "'v'"},
      {SQLExpr(SQLValue(2), db(1)), "2"},
      {SQLExpr(*n, db(1)), "x > 1"},
      {SQLExpr(n, db(1)), "x > 1"},
      {SQLExpr(std::shared_ptr<CommonExpr>(), db(1)), ""},
      {SQLExpr(sch("s").tab("t").col("c"), db(1)), "s.t.c"},  // the column's own dialect
      // Sequence fragments: SQLite's counter row, PostgreSQL's sequence; none elsewhere.
      {CURRVAL(seq("s.q"), tab("t")),
       texts("seq FROM sqlite_sequence WHERE name = 't'", "last_value FROM s.q")},
      {SETVAL(seq("s.q"), -7, tab("t")),
       texts("sqlite_sequence SET seq = -7 WHERE name = 't'", "setval('s.q'::regclass, -7, true)")},
  });
}

// A node naming the dialect it is asked for and keeping the table it is told.
class DialectNode : public CommonExpr {
 public:
  std::string GetExpr(const DB& d) const override { return std::to_string(+d) + table; }
  void set_table_name(const std::string& t) override { table = t; }
  std::string table;
};

TEST(ExprTree, Combinations) {
  const Ptr_CommonExpr a = cond("a = 1"), b = cond("b = 2"), c = cond("c = 3");
  expr e("a=1");
  (e | expr("b=2")) && expr("c=3");
  Ptr_CommonExpr x = cond("x"), nodes(std::make_shared<DialectNode>());
  const Ptr_CommonExpr both = x.AND(c), copy = x;
  const std::shared_ptr<CommonExpr> before = x.get_ptr();
  x.AndCon(c);  // changes its receiver only; AND, copies and snapshots keep their text
  nodes.AndCon(Ptr_CommonExpr(std::make_shared<DialectNode>()));
  nodes.set_table_name("t");  // reaches the left operand only
  check({
      {a, "a = 1"},
      {a.AND(b), "(a = 1 AND b = 2)"},
      {a.AND(b).OR(c), "((a = 1 AND b = 2) OR c = 3)"},
      {Ptr_CommonExpr(a).AndCon(b).OrCon(c), "(a = 1 AND b = 2 OR c = 3)"},
      {(Ptr_CommonExpr(a) && b) | c, "(a = 1 AND b = 2 OR c = 3)"},
      {Ptr_CommonExpr(a).AndCon(b).AND(c), "((a = 1 AND b = 2) AND c = 3)"},
      {Ptr_CommonExpr(), ""},
      {Ptr_CommonExpr().AndCon(a), "()"},  // pairs follow the left operand only
      {Ptr_CommonExpr().AND(a), "( AND a = 1)"},
      {e.GetExpr() + "|" + e.GetValue() + "|" + expr("d").GetExpr(),
       "(a=1 OR b=2 AND c=3)|a=1 OR b=2 AND c=3|d"},
      {x, "(x AND c = 3)"},
      {both, "(x AND c = 3)"},
      {copy.GetExpr(db(2)) + before->GetExpr(db(2)) + c.GetExpr(db(2)), "xxc = 3"},
      {nodes.OR(cond("x")),
       {"((1t AND 1) OR x)", "((2t AND 2) OR x)", "((3t AND 3) OR x)", "((7t AND 7) OR x)"}},
  });
}

// A filter loop that nests (`w = w.AND(x)`) instead of chaining must render
// and be destroyed without running out of stack.
TEST(ExprTree, DeepNesting) {
  const Ptr_CommonExpr x = cond("x"), y = cond("y");
  Ptr_CommonExpr w = x;
  std::string open, tail = "x";
  for (int i = 0; i < 200000; ++i) {
    w = i % 2 == 0 ? w.AND(x) : w.OR(x).AndCon(y);
    open += "(";
    tail += i % 2 == 0 ? " AND x)" : " OR x AND y)";
  }
  EXPECT_TRUE(w.GetExpr(db(7)) == open + tail);
  EXPECT_EQ(Ptr_CommonExpr().AndCon(w).GetExpr(db(1)), "()");
  w = Ptr_CommonExpr();
  EXPECT_EQ(x.GetExpr(db(1)), "x");
}

// Column "c" of table "t": the text is fixed when the condition is built, so
// neither the alias nor the subquery's WHERE given afterwards reaches it.
TEST(ExprPredicates, FixedTexts) {
  col c = tab("t").col("c");
  const SQLValue v2(2);
  const col d("d");
  QueryBuilder sub(vexel_test::fake(2));
  sub.SELECT({col("x")}).FROM(tab("u"));
  const std::initializer_list<Row> rows = {
      {c == 1, "t.c = 1"},
      {c == ULLONG_MAX, "t.c = 18446744073709551615"},
      {c == 1.5, "t.c = 1.500000"},
      {c == std::string("x"), "t.c = 'x'"},
      {c == "O'Brien", "t.c = 'O'Brien'"},
      {(c == d).AndCon(c == SQLValue("v")).AndCon(c.eq(v2)), "(t.c = d AND t.c = 'v' AND t.c = 2)"},
      {(c != d).AndCon(c != v2).AndCon(c.neq(v2)), "(t.c != d AND t.c != 2 AND t.c != 2)"},
      {(c < v2).AndCon(c.lt(v2)).AndCon(c.lt(d)), "(t.c < 2 AND t.c < 2 AND t.c < d)"},
      {(c <= d).AndCon(c <= v2), "(t.c <= d AND t.c <= 2)"},
      {(c > d).AndCon(c > v2).AndCon(c.gt(v2)), "(t.c > d AND t.c > 2 AND t.c > 2)"},
      {(c >= d).AndCon(c >= v2), "(t.c >= d AND t.c >= 2)"},
      {(c | SQLValue(4)).AndCon(c | SQLExpr("x + 1")), "(t.c | 4 AND t.c | x + 1)"},
      {c.in("1, 'a'"), "t.c IN (1, 'a')"},
      {c.in({1, 2, 3}), "t.c IN (1,2,3)"},
      {c.in({"a", "b"}), "t.c IN ('a','b')"},
      {c.in(std::vector<int>{}), "t.c IN ()"},
      {c.notin("1"), "t.c NOT IN (1)"},
      {c.notin({1, 2}), "t.c NOT IN (1,2)"},
      {c.notin(std::vector<std::string>{"a", "b"}), "t.c NOT IN ('a','b')"},
      {c.notin(std::vector<std::string>{}), "t.c NOT IN ()"},
      {d.in(sub).AndCon(d.notin(sub)).AndCon(d == sub),
       "(d IN (SELECT x FROM u) AND d NOT IN (SELECT x FROM u) AND d = (SELECT x FROM u))"},
      {(d != sub).AndCon(d < sub).AndCon(d <= sub).AndCon(d > sub).AndCon(d >= sub),
       "(d != (SELECT x FROM u) AND d < (SELECT x FROM u) AND d <= (SELECT x FROM u) AND d > "
       "(SELECT x FROM u) AND d >= (SELECT x FROM u))"},
      {c.BETWEEN(SQLValue(1), SQLValue("z")), "t.c BETWEEN 1 AND 'z'"},
      {c.is_null(), "t.c IS NULL "},
      {c.is_not_null(), "t.c IS NOT NULL "},
      {sch("s").func("f") == 1, "s..f = 1"},
      {col(sch("s").tab("t").col("c"), db(1)) == 1, "t.c = 1"},
  };
  c.AS("x");
  sub.WHERE(col("x") == 1);
  check(rows);
}

TEST(ExprPredicates, DialectNodes) {
  const col c = tab("t").col("c");
  check({
      {c.like("a%"), "t.c LIKE 'a%'"},
      {c.ilike("a%"), {"t.c LIKE 'a%'", "t.c ILIKE 'a%'", "t.c LIKE 'a%'", "t.c LIKE 'a%'"}},
      {c.regexp("^a"), lite_pg("regexp(t.c , '^a',0)", "t.c ~* '^a'")},
      {c.regexp_cap("^a"), lite_pg("regexp(t.c , '^a',1)", "t.c ~ '^a'")},
      {c.not_regexp("^a"), lite_pg("regexp(t.c , '^a',2)", "t.c !~* '^a'")},
      {c.not_regexp_cap("^a"), lite_pg("regexp(t.c , '^a',3)", "t.c !~ '^a'")},
      // SQLite degrades SIMILAR TO to LIKE with two blanks.
      {c.similar_to(SQLValue("a%")), lite_pg("t.c LIKE  'a%'", "t.c SIMILAR TO 'a%'")},
      // Full-text search drops the qualifiers.
      {sch("s").tab("t").col("c").full_text_search("w"),
       {"c LIKE '%w%'", "c @@ to_tsquery('w')", "c LIKE '%w%'", "c LIKE '%w%'"}},
      {c.XOR(SQLValue(5)), {"(t.c & ~(5))|(5 & ~t.c)", "t.c # 5", "t.c#5", "t.c#5"}},
      {c.XOR(SQLExpr("u.d")), {"(t.c & ~(u.d))|(u.d & ~t.c)", "t.c # u.d", "t.c#u.d", "t.c#u.d"}},
      {c.str_bit_and("0101"), lite_pg("str_bit_and(t.c,'0101')", "t.c & B'0101'")},
      {c.str_bit_or("1"), lite_pg("str_bit_or(t.c,'1')", "t.c | B'1'")},
      {c.str_bit_xor("10"), lite_pg("str_bit_xor(t.c,'10')", "t.c # B'10'")},
      {c.str_bit_not(), lite_pg("str_bit_not(t.c)", "~t.c")},
      {c.str_bit_shift_left(3), lite_pg("str_bit_shift_left(t.c,3)", "t.c << 3")},
      {c.str_bit_shift_right(-2), lite_pg("str_bit_shift_right(t.c,-2)", "t.c >> -2")},
  });
}

// SQLite's containment and overlap forms read the array's JSON elements.
std::string lite_contains(const std::string& list, int n) {
  return "EXISTS (SELECT 1 WHERE( SELECT SUM(CASE WHEN value in (" + list +
         ") THEN 1 ELSE 0 END)=" + std::to_string(n) +
         " FROM (SELECT distinct value from t,json_each(tags)) as value))";
}
std::string lite_overlap(const std::string& list) {
  return "EXISTS (SELECT value FROM (SELECT value from t,json_each(tags)) as value WHERE value "
         "in(" +
         list + "))";
}

TEST(ExprArrays, Conditions) {
  // The nodes take the bare name and the table qualifier, never the schema.
  const array_col tags = sch("s").tab("t").array_col("tags");
  const std::string strings = "tags && ARRAY['a','b']::VARCHAR[]";
  check({
      {tags.contains({1, 2}), lite_pg(lite_contains("1,2", 2), "tags @> ARRAY[1,2]::INTEGER[]")},
      {tags.contains({"a", "b"}),
       lite_pg(lite_contains("'a','b'", 2), "tags @> ARRAY['a','b']::VARCHAR[]")},
      // The count is the number of values given, duplicates included.
      {tags.contains(std::vector<int>{1, 1}),
       lite_pg(lite_contains("1,1", 2), "tags @> ARRAY[1,1]::INTEGER[]")},
      {tags.contains(std::vector<std::string>{}),
       lite_pg(lite_contains("", 0), "tags @> ARRAY[]::VARCHAR[]")},
      // Integers lose their cast outside PostgreSQL; the parenthesised string
      // list is joined by ", ", the bracketed one by ",".
      {tags & std::vector<int>{1, 2},
       {lite_overlap("1,2"), "tags && ARRAY[1,2]::INTEGER[]", "tags && ARRAY[1,2]",
        "tags && ARRAY[1,2]"}},
      {tags & std::vector<std::string>{"a", "b"}, lite_pg(lite_overlap("'a', 'b'"), strings)},
      {tags.operator&({1}),
       {lite_overlap("1"), "tags && ARRAY[1]::INTEGER[]", "tags && ARRAY[1]", "tags && ARRAY[1]"}},
      // The index is written as given, with no shift between the bases.
      {tags[2], lite_pg("s.t.tags->>$.2", "s.t.tags[2]")},
      {schema(db(1)).view("v").array_col("a")[0], lite_pg("v.a->>$.0", "v.a[0]")},
      {SQLValue("a") == ANY(tags),
       lite_pg("( SELECT value FROM t,json_each(tags)) in ('a')", "'a'=ANY(tags)")},
  });
}

TEST(ExprArrays, Literals) {
  check({
      {ArrayValue(std::vector<int>{1, 2}), lite_pg("json_array(1,2)", "ARRAY[1,2]::INTEGER[]")},
      {ArrayValue(std::vector<std::string>{"a", "b"}),
       lite_pg("json_array(\"a\",\"b\")", "ARRAY[\"a\",\"b\"]::VARCHAR[]")},
      {ArrayValue(std::vector<int>{}), ""},
      {string_to_array(ArrayOfInteger, "1;2", ';'),
       lite_pg("json_array(1,2)", "string_to_array('1;2',';')::INTEGER[]")},
      // The string form has a blank after the parenthesis.
      {string_to_array(ArrayOfString, "a,b", ','),
       lite_pg("json_array(\"a\",\"b\")", "string_to_array( 'a,b',',')::VARCHAR[]")},
      {string_to_array(static_cast<array_type>(3), "1", ','), ""},
      // Empty, non-numeric and out-of-range pieces are left out of an integer
      // array; string pieces are kept as they are.
      {string_to_array(ArrayOfInteger, "1;;x;-2147483648;2147483647;2147483648", ';'),
       lite_pg("json_array(1,-2147483648,2147483647)",
               "string_to_array('1;;x;-2147483648;2147483647;2147483648',';')::INTEGER[]")},
      {string_to_array(ArrayOfString, "a;;b;", ';'),
       lite_pg("json_array(\"a\",\"\",\"b\",\"\")", "string_to_array( 'a;;b;',';')::VARCHAR[]")},
      {string_to_array(ArrayOfInteger, "", ';'),
       lite_pg("json_array()", "string_to_array('',';')::INTEGER[]")},
  });
}

TEST(ExprCase, Branches) {
  const SQLValue one(1), two_(2);
  const col c = tab("t").col("c");
  check({
      // Without an operand "CASE " meets " WHEN ": two blanks, kept.
      {CASE().WHEN(cond("a")).THEN(one).END(), "CASE  WHEN a THEN 1 END"},
      {CASE(SQLExpr("x")).WHEN(SQLExpr("x=1")).THEN(one).ELSE(c),
       "CASE x WHEN x=1 THEN 1 ELSE t.c END"},
      {CASE(), "CASE  END"},
      {CASE().ELSE(one).ELSE(SQLExpr("z")), "CASE  ELSE z END"},
      // A value or column given to WHEN becomes the operand and opens no
      // branch: a THEN with no condition pending is dropped.
      {CASE(SQLExpr("x")).WHEN(SQLValue(5)).THEN(one), "CASE 5 END"},
      {CASE().WHEN(cond("a")).WHEN(c).THEN(c), "CASE t.c WHEN a THEN t.c END"},
      {CASE().WHEN(cond("a")).THEN(one).THEN(two_), "CASE  WHEN a THEN 1 WHEN a THEN 2 END"},
      {CASE().WHEN(p(SQLExpr("p"))).THEN(p(SQLValue(3))).ELSE(p(SQLExpr("u"))),
       "CASE  WHEN p THEN 3 ELSE u END"},
      {CASE().WHEN(cond("a").AND(cond("b"))).THEN(cond("s")).ELSE(cond("e")),
       "CASE  WHEN (a AND b) THEN s ELSE e END"},
      // The dialect reaches the parts.
      {CASE().WHEN(c.ilike("a%")).THEN(p(NOW(1))),
       texts("CASE  WHEN t.c LIKE 'a%' THEN DATETIME('now','localtime') END",
             "CASE  WHEN t.c ILIKE 'a%' THEN now() END", "CASE  WHEN t.c LIKE 'a%' THEN  END")},
  });
}

window_option window(bool partition, bool order) {
  window_option w;
  w.partition_by = {col("a"), col("b")};
  w.order_by = {col("d").DESC(), col("e")};
  w.flags.set(window_option::kPartitionBy, partition);
  w.flags.set(window_option::kOrderBy, order);
  return w;
}

TEST(ExprAggregates, GroupConcatAndWindows) {
  const col c = tab("t").col("c");
  const std::string pg = "array_to_string(array_agg(t.c),";
  check({
      {GroupConcatExpr(c), lite_pg("group_concat(t.c,',')", pg + "',')")},
      {GroupConcatExpr(c, ';').AS("x"), lite_pg("group_concat(t.c,';') AS x", pg + "';') AS x")},
      {GroupConcatExpr(c).AS("x").AS(std::string("y")),
       lite_pg("group_concat(t.c,',') AS y", pg + "',') AS y")},
      {GroupConcatExpr(c).AS("x").AS(""), lite_pg("group_concat(t.c,',')", pg + "',')")},
  });
  window_option third_bit = window(false, false), empty_lists;
  third_bit.flags.set(2);
  empty_lists.flags.set();
  aggr_func in_place = RANK();
  in_place.Over(window(false, false));
  const col s = sch("s").tab("t").col("c");
  // The text is fixed when built, whatever dialect renders the column later.
  check({
      {AVG(s), "AVG(s.t.c)"},
      {COUNT(s), "COUNT(s.t.c)"},
      {MAX(s), "MAX(s.t.c)"},
      {MIN(s), "MIN(s.t.c)"},
      {SUM(s), "SUM(s.t.c)"},
      {ROW_NUMBER(), "ROW_NUMBER()"},
      // A blank before the first list item, so two after the keyword.
      {COUNT(s).Over(window(true, true)),
       "COUNT(s.t.c) OVER (PARTITION BY  a,b ORDER BY  d DESC ,e)"},
      {RANK().Over(window(false, true)), "RANK() OVER ( ORDER BY  d DESC ,e)"},
      {RANK().Over(window(true, false)), "RANK() OVER (PARTITION BY  a,b)"},
      {RANK().Over(third_bit), "RANK() OVER ()"},
      {RANK().Over(empty_lists), "RANK() OVER (PARTITION BY  ORDER BY )"},
      {in_place.Over(window(false, false)), "RANK() OVER () OVER ()"},
  });
  EXPECT_EQ(EXISTS(SQLExpr("SELECT 1")).ToExpr() + NOT_EXISTS(SQLExpr("SELECT 2")).ToExpr(),
            " EXISTS (SELECT 1) NOT EXISTS (SELECT 2)");
}

TEST(ExprTime, ClocksAndValues) {
  const std::string utc = "CURRENT_TIMESTAMP at time zone 'UTC'";
  check({
      {NOW(0), texts("DATETIME('now')", "now() at time zone 'UTC'")},
      {NOW(1), texts("DATETIME('now','localtime')", "now()")},
      {NOW(-1), texts("DATETIME('now')", "now()")},
      // CURRENT_TIMESTAMP is the one function SQL Server gets a text for.
      {CURRENT_TIMESTAMP(0), texts("CURRENT_TIMESTAMP", utc, utc)},
      {CURRENT_TIMESTAMP(1),
       lite_pg("datetime(CURRENT_TIMESTAMP,'localtime')", "CURRENT_TIMESTAMP")},
      {CURRENT_TIMESTAMP(7), "CURRENT_TIMESTAMP"},
      {DATE("2021-01-02"), texts("DATE('2021-01-02')", "date '2021-01-02'")},
      {TIME("03:04"), texts("TIME('03:04')", "time '03:04'")},
      {EXTRACT("d"),
       texts("strftime('%s','d')", "extract(epoch from timestamp without time zone 'd')")},
      {DATE_PART(static_cast<TimeType>(7), "d"), ""},
      {DATE_TRUNC(static_cast<TimeType>(0), "t.c"), ""},
  });
  // The truncated value is not quoted: "::timestamp" follows a column or a
  // literal the host quoted itself.
  const struct {
    TimeType unit;
    const char* word;
    const char* part;
    const char* trunc;
  } units[] = {
      {YEAR, "year", "%Y", "%Y-01-01 00:00:00"},     {MONTH, "month", "%m", "%Y-%m-01 00:00:00"},
      {DAY, "day", "%d", "%Y-%m-%d 00:00:00"},       {HOUR, "hour", "%H", "%Y-%m-%d %H:00:00"},
      {MINUTE, "minute", "%M", "%Y-%m-%d %H:%M:00"}, {SECOND, "second", "%S", "%Y-%m-%d %H:%M:%S"},
  };
  for (const auto& u : units) {
    const std::string word = u.word, part = u.part, trunc = u.trunc;
    check({{DATE_PART(u.unit, "d"),
            texts("strftime('" + part + "', 'd')", "date_part('" + word + "', TIMESTAMP 'd')")},
           {DATE_TRUNC(u.unit, "t.c"), texts("strftime('" + trunc + "', t.c)",
                                             "date_trunc('" + word + "', t.c::timestamp)")}});
  }
}

// Columns go inside single quotes as well. The stored copy keeps the names
// only, so a SQLite column keeps its schema. Amounts of 0 or less lose their
// first character: -3 gives "3" after a minus, 0 a subtraction of nothing.
TEST(ExprTime, DifferencesAndOffsets) {
  const std::string a = "a", b = "b";
  check({
      {TIMEDIFF("a", "b"),
       texts("strftime('%s', 'a') - strftime('%s', 'b')",
             "EXTRACT(EPOCH FROM timestamp 'a') - EXTRACT(EPOCH FROM timestamp 'b')")},
      {TIMEDIFF(schema(db(1)).tab("t").col("a"), col("b")),
       texts("strftime('%s', 's.t.a') - strftime('%s', 'b')",
             "EXTRACT(EPOCH FROM timestamp 's.t.a') - EXTRACT(EPOCH FROM timestamp 'b')")},
      {TIME_ALGORITHM("x", {{"day", 1}, {"hour", -2}}),
       texts("datetime('x', '+1 day', '-2 hour')",
             "timestamp 'x' + interval '1 day'- interval '2 hour'")},
      {TIME_ALGORITHM("x", {{"day", 0}}),
       texts("datetime('x', '- day')", "timestamp 'x' - interval ' day'")},
      {TIME_ALGORITHM(a, {}), texts("datetime('a')", "timestamp 'a' ")},
      {TIME_ALGORITHM(col("c"), {{"month", 10}, {"day", INT_MIN}}),  // in key order
       texts("datetime('c', '-2147483648 day', '+10 month')",
             "timestamp 'c' - interval '2147483648 day'+ interval '10 month'")},
  });
  // Every other argument form keeps its arguments in order.
  for (const TimeExpr& e :
       {TIMEDIFF(a, "b"), TIMEDIFF("a", b), TIMEDIFF(a, b), TIMEDIFF(col("a"), b),
        TIMEDIFF(col("a"), "b"), TIMEDIFF(col("a"), col("b"))}) {
    EXPECT_EQ(e.GetExpr(db(1)), "strftime('%s', 'a') - strftime('%s', 'b')");
  }
}

// Compares a JSON function's texts for codes 1 to 4 and every log line it
// wrote, "level|[function]message.[" with the position cut off. Each line must
// still end in "[file(line)]" under the module tag hosts filter on.
void json_case(vexel_test::CaptureLog& capture, const std::map<DB, SQLValue>& entries,
               const std::vector<std::string>& want, const std::vector<std::string>& log) {
  std::vector<std::string> got;
  for (int code : {1, 2, 3, 4})
    got.push_back(entries.count(db(code)) ? entries.at(db(code)).GetValue() : "?");
  EXPECT_EQ(entries.size(), 4u);
  EXPECT_EQ(got, want);
  EXPECT_EQ(capture.texts(), log);
  for (const auto& line : capture.lines()) {
    EXPECT_TRUE(std::regex_search(line.text, std::regex("\\[[^\\[]*\\(\\d+\\)\\]$"))) << line.text;
    EXPECT_EQ(line.module, "Vexel");
  }
  capture.clear();
}

const col kDoc("doc");

TEST(ExprJson, KeyDelete) {
  vexel_test::CaptureLog log;
  // The column renders in its own dialect when the function is called.
  json_case(log, JSON_KEY_DELETE(sch("s").tab("t").col("doc"), "'{a,b}'"),
            {"json_remove( s.t.doc,'$.a.b')", "s.t.doc::jsonb #- '{a,b}'", "", ""},
            {"2|[vexel::JSON_KEY_DELETE]before:target_path:'{a,b}'.[",
             "2|[vexel::JSON_KEY_DELETE]after:target_path:$.a.b.["});
  json_case(log, JSON_KEY_DELETE(kDoc, "a.b"), {"", "doc::jsonb #- a.b", "", ""},
            {"2|[vexel::JSON_KEY_DELETE]before:target_path:a.b.[",
             "5|[vexel::JSON_KEY_DELETE]target_path error:a.b.["});
}

// The inner double quote and the doubled single quote show when each rewrite
// happens: SQLite's "after between_value" line still has the doubled quote.
TEST(ExprJson, SetTrace) {
  const std::string f = "2|[vexel::JSON_SET]";
  vexel_test::CaptureLog log;
  json_case(log, JSON_SET(kDoc, "'{a}'", "'\"x\"y''z\"'"),
            {"json_set( doc,'$.a',\"x\"\"y'z\")", "jsonb_set( doc,'{a}','\"x\\\"y''z\"')", "", ""},
            {f + "before:target_path:'{a}'.new_value:'\"x\"y''z\"'[", f + "pre_value:'.[",
             f + "post_value:'.[", f + "between_value:x\"y''z.[",
             f + "after between_value:x\\\"y''z.[", f + "after_value:'\"x\\\"y''z\"'.[",
             f + "after:target_path:$.a.[", f + "after:after_value:\"x\"y''z\".[",
             f + "pre_value:.[", f + "post_value:.[", f + "between_value:x\"y''z.[",
             f + "after between_value:x\"\"y''z.[", f + "after_value:\"x\"\"y'z\".["});
  json_case(log, JSON_SET(kDoc, "'{a,b}'", "1"),
            {"json_set( doc,'$.a.b',1)", "jsonb_set( doc,'{a,b}',1)", "", ""},
            {f + "before:target_path:'{a,b}'.new_value:1[", f + "after:target_path:$.a.b.[",
             "5|[vexel::JSON_SET]no no_single_quote_value:1.["});
  json_case(
      log, JSON_SET(kDoc, "a", "'1'"), {"", "jsonb_set( doc,a,'1')", "", ""},
      {f + "before:target_path:a.new_value:'1'[", "5|[vexel::JSON_SET]target_path error:a.["});
}

// Inner double quotes: a backslash for PostgreSQL, doubled for SQLite; a
// doubled single quote becomes one in the SQLite text only. A value needs two
// quotes of a kind to be rewritten.
TEST(ExprJson, SetEscaping) {
  vexel_test::CaptureLog quiet;
  check({
      {JSON_SET(kDoc, "'{a}'", "'\"say \"hi\" it''s\"'"),
       texts("json_set( doc,'$.a',\"say \"\"hi\"\" it's\")",
             "jsonb_set( doc,'{a}','\"say \\\"hi\\\" it''s\"')")},
      {JSON_SET(kDoc, "'{a}'", "'\"x'"),
       texts("json_set( doc,'$.a',\"x)", "jsonb_set( doc,'{a}','\"x')")},
      {JSON_SET(kDoc, "'{a}'", "x'"), texts("json_set( doc,'$.a',x')", "jsonb_set( doc,'{a}',x')")},
      {JSON_SET(kDoc, "'}a{'", "'1'"), texts("", "jsonb_set( doc,'}a{','1')")},
      {JSON_SET(kDoc, "'{}'", "'1'"), texts("json_set( doc,'$.',1)", "jsonb_set( doc,'{}','1')")},
  });
}

TEST(ExprLog, QualifiedNameFromSignatures) {
  auto* name = &internal::qualified_name;
  check({
      {name("bool vexel::QueryBuilder::Execute()"), "vexel::QueryBuilder::Execute"},
      // Clang keeps the "&" or "*" of the return type against the name.
      {name("vexel::UpdateBuilder &vexel::UpdateBuilder::SET(const vexel::col &)"),
       "vexel::UpdateBuilder::SET"},
      {name("vexel::SQLUpdate *vexel::UpdateBuilder::impl() const"), "vexel::UpdateBuilder::impl"},
      {name("(anonymous namespace)::Values vexel::JSON_SET(const vexel::col &, std::string)"),
       "vexel::JSON_SET"},
      {name("void vexel::(anonymous namespace)::helper(int)"),
       "vexel::(anonymous namespace)::helper"},
      {name("T vexel::f(T) [with T = void (*)(int)]"), "vexel::f"},
      {name("bool __cdecl vexel::PGQuery::Execute(void)"), "vexel::PGQuery::Execute"},
      {name("main") + name(nullptr), "main"},
  });
}

// Computed values over columns of the dialect under test.
col c_(DB d, const char* name) { return schema(d).tab("t").col(name); }

TEST(ExprCalc, ArithmeticKeepsPrecedence) {
  check({
      {[](DB d) { return (c_(d, "p") * c_(d, "q") * (1 - c_(d, "r"))).col_name(); },
       lite_pg("t.p * t.q * (1 - t.r)", "s.t.p * s.t.q * (1 - s.t.r)")},
      {[](DB d) { return (calc(c_(d, "a")) - (c_(d, "b") - c_(d, "c")) / -c_(d, "e")).col_name(); },
       lite_pg("t.a - (t.b - t.c) / -t.e", "s.t.a - (s.t.b - s.t.c) / -s.t.e")},
      // The in-place sum stays one; as an operand it is bracketed.
      {[](DB d) { return (c_(d, "a") + c_(d, "b") * 2 % (calc(3) - -1)).col_name(); },
       lite_pg("t.a + t.b * 2 % (3 - -1)", "s.t.a + s.t.b * 2 % (3 - -1)")},
      {[](DB d) {
         col a = c_(d, "a");
         a + c_(d, "b");
         return (2 / a).col_name() + "|" + (-calc(-1)).col_name() + "|" + a.col_name() + "|" +
                (calc(SQLValue("x y")) * 2).col_name() + CONCAT({}).col_name() +
                CONCAT({a}).col_name();
       },
       lite_pg("2 / (t.a + t.b)|-(-1)|t.a + t.b|'x y' * 2''t.a + t.b",
               "2 / (s.t.a + s.t.b)|-(-1)|s.t.a + s.t.b|'x y' * 2''s.t.a + s.t.b")},
      // A chain of literals waits for a dialect up to 64 deep, then takes
      // PostgreSQL's forms.
      {[](DB d) {
         const auto first = [d](const calc& w) {
           const std::string t = (c_(d, "a") + w).col_name();
           return t.substr(t.find("+ ") + 2, 1);
         };
         calc w = true;
         for (int i = 0; i < 64; ++i) w = w * 1;
         const std::string out = first(w);
         return out + first(w * 1);
       },
       {"1T", "TT", "1T", "TT"}},
      // Literals take the dialect of the column they meet.
      {[](DB d) {
         return (c_(d, "f") != COALESCE({calc(true), c_(d, "g")})).GetExpr(d);
       },
       {"t.f != COALESCE(1, t.g)", "s.t.f != COALESCE(TRUE, s.t.g)", "s.t.f != COALESCE(1, s.t.g)",
        "s.t.f != COALESCE(TRUE, s.t.g)"}},
      {[](DB d) { return calc(SafeValue("é")).for_dialect(d).col_name(); },
       {"'é'", "'é'", "N'é'", "'é'"}},
      {[](DB d) {
         QueryBuilder q(vexel_test::fake(d));
         q.SELECT({MAX(c_(d, "p"))}).FROM(schema(d).tab("t"));
         return (c_(d, "p") * 100 / calc(q)).col_name();
       },
       lite_pg("t.p * 100 / (SELECT MAX(t.p) FROM s.t)",
               "s.t.p * 100 / (SELECT MAX(s.t.p) FROM s.t)")},
  });
}

TEST(ExprCalc, StringsAndCasts) {
  check({
      {[](DB d) {
         return CONCAT({c_(d, "a"), SafeValue("-"), UPPER(c_(d, "b") + 1)}).col_name();
       },
       {"t.a || '-' || UPPER(t.b + 1)", "s.t.a || '-' || UPPER(s.t.b + 1)",
        "s.t.a + '-' + UPPER(s.t.b + 1)", "s.t.a || '-' || UPPER(s.t.b + 1)"}},
      {[](DB d) { return SUBSTRING(LOWER(c_(d, "a")), 2, -1).col_name(); },
       {"SUBSTR(LOWER(t.a), 2, 0)", "SUBSTRING(LOWER(s.t.a) FROM 2 FOR 0)",
        "SUBSTRING(LOWER(s.t.a), 2, 0)", "SUBSTRING(LOWER(s.t.a) FROM 2 FOR 0)"}},
      {[](DB d) { return SUBSTRING(TRIM(c_(d, "a")), 3).col_name(); },
       {"SUBSTR(TRIM(t.a), 3)", "SUBSTRING(TRIM(s.t.a) FROM 3)",
        "SUBSTRING(TRIM(s.t.a), 3, DATALENGTH(TRIM(s.t.a)))", "SUBSTRING(TRIM(s.t.a) FROM 3)"}},
      {[](DB d) { return (LENGTH(c_(d, "a")) * 2).col_name(); },
       {"LENGTH(t.a) * 2", "LENGTH(s.t.a) * 2", "LEN(s.t.a) * 2", "LENGTH(s.t.a) * 2"}},
      {[](DB d) {
         return NULLIF(c_(d, "a"), SafeValue("")).col_name() +
                COUNT_DISTINCT(c_(d, "b")).col_name();
       },
       lite_pg("NULLIF(t.a, '')COUNT(DISTINCT t.b)", "NULLIF(s.t.a, '')COUNT(DISTINCT s.t.b)")},
      {[](DB d) {
         std::string out;
         for (CastType t : {CastType::Integer, CastType::BigInt, CastType::Double, CastType::Text,
                            CastType::Date, CastType::Timestamp, CastType::Boolean})
           out += CAST(calc(SafeValue("1")).for_dialect(d), t).col_name() + ";";
         return out + CAST(c_(d, "a"), static_cast<CastType>(9)).col_name();
       },
       {"CAST('1' AS INTEGER);CAST('1' AS INTEGER);CAST('1' AS REAL);CAST('1' AS TEXT);"
        "date('1');datetime('1');(CAST('1' AS INTEGER) <> 0);t.a",
        "CAST('1' AS INTEGER);CAST('1' AS BIGINT);CAST('1' AS DOUBLE PRECISION);CAST('1' AS TEXT);"
        "CAST('1' AS DATE);CAST('1' AS TIMESTAMP);CAST('1' AS BOOLEAN);s.t.a",
        "CAST('1' AS INT);CAST('1' AS BIGINT);CAST('1' AS FLOAT);CAST('1' AS NVARCHAR(MAX));"
        "CAST('1' AS DATE);CAST('1' AS DATETIME2);CAST('1' AS BIT);s.t.a",
        "CAST('1' AS INTEGER);CAST('1' AS BIGINT);CAST('1' AS DOUBLE PRECISION);CAST('1' AS TEXT);"
        "CAST('1' AS DATE);CAST('1' AS TIMESTAMP);CAST('1' AS BOOLEAN);s.t.a"}},
      {[](DB d) {
         return c_(d, "a").not_like("x%").GetExpr(d) + "|" + c_(d, "a").not_ilike("x%").GetExpr(d);
       },
       {"t.a NOT LIKE 'x%'|t.a NOT LIKE 'x%'", "s.t.a NOT LIKE 'x%'|s.t.a NOT ILIKE 'x%'",
        "s.t.a NOT LIKE 'x%'|s.t.a NOT LIKE 'x%'", "s.t.a NOT LIKE 'x%'|s.t.a NOT LIKE 'x%'"}},
  });
}

TEST(ExprCalc, DatesAndQuantified) {
  check({
      {[](DB d) {
         std::string out;
         for (DateField f :
              {DateField::Year, DateField::Second, DateField::DayOfWeek, DateField::Epoch,
               DateField::Month, DateField::Day, DateField::Hour, DateField::Minute})
           out += DATE_FIELD(f, c_(d, "at")).col_name() + ";";
         return out + DATE_FIELD(static_cast<DateField>(8), c_(d, "at")).col_name();
       },
       {"CAST(strftime('%Y', t.at) AS INTEGER);CAST(strftime('%S', t.at) AS INTEGER);"
        "CAST(strftime('%w', t.at) AS INTEGER);CAST(strftime('%s', t.at) AS INTEGER);"
        "CAST(strftime('%m', t.at) AS INTEGER);CAST(strftime('%d', t.at) AS "
        "INTEGER);CAST(strftime('%H', t.at) AS INTEGER);CAST(strftime('%M', t.at) AS INTEGER);t.at",
        "CAST(EXTRACT(YEAR FROM s.t.at) AS INTEGER);CAST(FLOOR(EXTRACT(SECOND FROM s.t.at)) AS "
        "INTEGER);CAST(EXTRACT(DOW FROM s.t.at) AS INTEGER);CAST(FLOOR(EXTRACT(EPOCH FROM s.t.at)) "
        "AS BIGINT);CAST(EXTRACT(MONTH FROM s.t.at) AS INTEGER);CAST(EXTRACT(DAY FROM s.t.at) AS "
        "INTEGER);CAST(EXTRACT(HOUR FROM s.t.at) AS INTEGER);CAST(EXTRACT(MINUTE FROM s.t.at) AS "
        "INTEGER);s.t.at",
        "DATEPART(year, s.t.at);DATEPART(second, s.t.at);((DATEPART(weekday, s.t.at) + @@DATEFIRST "
        "- 1) % 7);DATEDIFF_BIG(second, '1970-01-01', s.t.at);DATEPART(month, "
        "s.t.at);DATEPART(day, s.t.at);DATEPART(hour, s.t.at);DATEPART(minute, s.t.at);s.t.at",
        "CAST(EXTRACT(YEAR FROM s.t.at) AS INTEGER);CAST(FLOOR(EXTRACT(SECOND FROM s.t.at)) AS "
        "INTEGER);CAST(EXTRACT(DOW FROM s.t.at) AS INTEGER);CAST(FLOOR(EXTRACT(EPOCH FROM s.t.at)) "
        "AS BIGINT);CAST(EXTRACT(MONTH FROM s.t.at) AS INTEGER);CAST(EXTRACT(DAY FROM s.t.at) AS "
        "INTEGER);CAST(EXTRACT(HOUR FROM s.t.at) AS INTEGER);CAST(EXTRACT(MINUTE FROM s.t.at) AS "
        "INTEGER);s.t.at"}},
      // A window of literals waits for the column's dialect.
      {[](DB d) {
         calc from = CAST(SafeValue::date(1995, 1, 1), CastType::Date);
         return (c_(d, "on") < DATE_ADD(from, -3, MONTH)).GetExpr(d) + "|" +
                TIMESTAMP_ADD(c_(d, "at"), 2, HOUR).col_name() +
                DATE_ADD(c_(d, "on"), 1, static_cast<TimeType>(7)).col_name() + "|" +
                DATE_ADD(c_(d, "on"), 1, YEAR).col_name();
       },
       {"t.on < date(date('1995-01-01'), '-3 months')|datetime(t.at, '+2 hours')t.on|"
        "date(t.on, '+1 years')",
        "s.t.on < CAST(CAST(CAST('1995-01-01' AS DATE) AS DATE) + INTERVAL '-3 month' AS DATE)|"
        "(CAST(s.t.at AS TIMESTAMP) + INTERVAL '2 hour')s.t.on|"
        "CAST(CAST(s.t.on AS DATE) + INTERVAL '1 year' AS DATE)",
        "s.t.on < CAST(DATEADD(month, -3, CAST('1995-01-01' AS DATE)) AS DATE)|"
        "DATEADD(hour, 2, CAST(s.t.at AS DATETIME2))s.t.on|CAST(DATEADD(year, 1, s.t.on) AS DATE)",
        "s.t.on < CAST(CAST(CAST('1995-01-01' AS DATE) AS DATE) + INTERVAL '-3 month' AS DATE)|"
        "(CAST(s.t.at AS TIMESTAMP) + INTERVAL '2 hour')s.t.on|"
        "CAST(CAST(s.t.on AS DATE) + INTERVAL '1 year' AS DATE)"}},
      // Rendered with the statement's dialect.
      {[](DB d) {
         QueryBuilder q(vexel_test::fake(d));
         q.SELECT({col("v")}).FROM(tab("u"));
         return (col("x") > ALL_OF(q)).GetExpr(d) + "|" + (col("x") != ANY_OF(q)).GetExpr(d) + "|" +
                (col("x") <= ANY_OF(q)).GetExpr(d);
       },
       texts(
           "NOT EXISTS (WITH vexel_q(vexel_v) AS (SELECT v FROM u) SELECT 1 FROM vexel_q WHERE "
           "(x > vexel_q.vexel_v) IS NOT TRUE)|EXISTS (WITH vexel_q(vexel_v) AS (SELECT v FROM u) "
           "SELECT 1 FROM vexel_q WHERE x <> vexel_q.vexel_v)|EXISTS (WITH vexel_q(vexel_v) AS "
           "(SELECT v FROM u) SELECT 1 FROM vexel_q WHERE x <= vexel_q.vexel_v)",
           "x > ALL (SELECT v FROM u)|x <> ANY (SELECT v FROM u)|x <= ANY (SELECT v FROM u)",
           "x > ALL (SELECT v FROM u)|x <> ANY (SELECT v FROM u)|x <= ANY (SELECT v FROM u)")},
  });
}

}  // namespace
