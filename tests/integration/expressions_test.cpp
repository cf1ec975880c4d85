// Conditions and value expressions run on SQLite and PostgreSQL: the same
// rows from both engines wherever the dialect's text is valid SQL there,
// and the places where the SQLite forms answer a different question.
#include <cstdlib>
#include <map>
#include <sstream>

#include "Engines.h"
#include "support/CaptureLog.h"

namespace vexel_it {
namespace {

using vexel::col;
using vexel::QueryBuilder;
using vexel::SQLExpr;
using vexel::SQLValue;

class ExpressionsTest : public EngineTest {
 protected:
  tessel::DBTYPE dialect() const { return is_sqlite() ? tessel::DB_SQLITE : tessel::DB_POSTGRESQL; }
  QueryBuilder Builder() { return QueryBuilder(conn_); }
  // A value expression as a select column named `alias`.
  col Value(const vexel::CommonExpr& e, const char* alias) const {
    return col(e, dialect()).AS(alias);
  }
  // Names of the items matching `condition`, by id.
  Rows Names(const vexel::CommonExpr& condition) {
    QueryBuilder q = Builder();
    q.SELECT({items_.col("name")}).FROM(items_).WHERE(condition).ORDER_BY({items_.col("id")});
    return Run(q, {"name"});
  }
  // `values` from one row of nothing: "SELECT v1 AS a, ...".
  Rows Scalars(const std::vector<col>& values, const std::vector<std::string>& names) {
    QueryBuilder q = Builder();
    q.SELECT(values);
    return Run(q, names);
  }
  // Creates `name` in the test's schema with engine-specific column types.
  vexel::tab Table(const std::string& name, const std::string& sqlite_columns,
                   const std::string& pg_columns, const std::string& rows) {
    const std::string table = schema_ + "." + name;
    Exec("CREATE TABLE " + table + " (" + (is_sqlite() ? sqlite_columns : pg_columns) + ")");
    if (!rows.empty()) Exec("INSERT INTO " + table + " VALUES " + rows);
    return vexel::sch(schema_).tab(name);
  }
};

double Number(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

std::string WithoutBlanks(std::string text) {
  std::string out;
  for (char ch : text) {
    if (ch != ' ') out += ch;
  }
  return out;
}

TEST_P(ExpressionsTest, RegularExpressionKinds) {
  const col name = items_.col("name");
  const struct {
    const char* kind;
    vexel::Ptr_CommonExpr condition;
    Rows rows;
  } cases[] = {
      {"regexp ignores case", name.regexp("^A|^C"), {{"apple"}, {"carrot"}}},
      {"regexp_cap keeps case", name.regexp_cap("^A|^c"), {{"carrot"}}},
      {"not_regexp", name.not_regexp("AN|^D"), {{"apple"}, {"carrot"}, {"eclair"}}},
      {"not_regexp_cap",
       name.not_regexp_cap("AN|^d"),
       {{"apple"}, {"banana"}, {"carrot"}, {"eclair"}}},
      // SQLite degrades SIMILAR TO to LIKE; a LIKE-shaped pattern agrees.
      {"similar_to", name.similar_to(SQLValue("%n_")), {{"banana"}}},
      {"ilike", name.ilike("%A%"), {{"apple"}, {"banana"}, {"carrot"}, {"eclair"}}},
      {"like", name.like("d%"), {{"donut"}}},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.kind);
    EXPECT_EQ(Names(k.condition), k.rows);
  }
}

TEST_P(ExpressionsTest, FullTextAndFixedPredicates) {
  const col price = items_.col("price");
  const struct {
    const char* name;
    vexel::Ptr_CommonExpr condition;
    Rows rows;
  } cases[] = {
      {"full text", items_.col("name").full_text_search("banana"), {{"banana"}}},
      {"in", price.in({1, 6}), {{"carrot"}, {"eclair"}}},
      {"notin strings", items_.col("category").notin({"fruit", "bakery"}), {{"carrot"}}},
      {"between", price.BETWEEN(SQLValue(2), SQLValue(3)), {{"apple"}, {"banana"}}},
      {"is null", items_.col("category").is_null(), {}},
      {"combined",
       (price > SQLValue(4)).OR(items_.col("name") == "apple"),
       {{"apple"}, {"donut"}, {"eclair"}}},
  };
  for (const auto& k : cases) {
    SCOPED_TRACE(k.name);
    EXPECT_EQ(Names(k.condition), k.rows);
  }
  // A subquery as IN list.
  QueryBuilder ordered = Builder();
  ordered.SELECT({orders_.col("item_id")}).FROM(orders_).WHERE(orders_.col("qty") > SQLValue(5));
  EXPECT_EQ(Names(items_.col("id").in(ordered)), (Rows{{"apple"}, {"carrot"}}));
}

TEST_P(ExpressionsTest, Xor) {
  QueryBuilder q = Builder();
  q.SELECT({items_.col("id"), Value(items_.col("price").XOR(SQLValue(3)), "v")})
      .FROM(items_)
      .ORDER_BY({items_.col("id")});
  EXPECT_EQ(Run(q, {"id", "v"}),
            (Rows{{"1", "0"}, {"2", "1"}, {"3", "2"}, {"4", "6"}, {"5", "5"}}));
}

TEST_P(ExpressionsTest, BitStrings) {
  const vexel::tab bits =
      Table("bits", "id INTEGER, b TEXT", "id INTEGER, b BIT(4)",
            is_sqlite() ? "(1, '1100'), (2, '0011')" : "(1, B'1100'), (2, B'0011')");
  const col b = bits.col("b");
  QueryBuilder q = Builder();
  q.SELECT({bits.col("id"), Value(b.str_bit_and("0101"), "and_"),
            Value(b.str_bit_or("0101"), "or_"), Value(b.str_bit_xor("0101"), "xor_"),
            Value(b.str_bit_not(), "not_"), Value(b.str_bit_shift_left(1), "shl"),
            Value(b.str_bit_shift_right(2), "shr")})
      .FROM(bits)
      .ORDER_BY({bits.col("id")});
  EXPECT_EQ(Run(q, {"id", "and_", "or_", "xor_", "not_", "shl", "shr"}),
            (Rows{{"1", "0100", "1101", "1001", "0011", "1000", "0011"},
                  {"2", "0001", "0111", "0110", "1100", "0110", "0000"}}));
}

// With one row the SQLite forms, which read the JSON text of the whole
// table, agree with PostgreSQL's per-row array operators.
TEST_P(ExpressionsTest, ArraysOnOneRow) {
  const vexel::tab arr = Table(
      "arr", "id INTEGER, tags TEXT, words TEXT", "id INTEGER, tags INTEGER[], words VARCHAR[]",
      is_sqlite() ? "(1, '[3,1,2]', '[\"a\",\"b\"]')" : "(1, '{3,1,2}', '{a,b}')");
  const vexel::array_col tags = arr.array_col("tags");
  const vexel::array_col words = arr.array_col("words");
  auto ids = [&](const vexel::CommonExpr& condition) {
    QueryBuilder q = Builder();
    q.SELECT({arr.col("id")}).FROM(arr).WHERE(condition);
    return Run(q, {"id"});
  };
  const Rows hit{{"1"}}, miss{};
  EXPECT_EQ(ids(tags.contains({1, 2})), hit);
  EXPECT_EQ(ids(tags.contains({1, 4})), miss);
  EXPECT_EQ(ids(words.contains({"a"})), hit);
  EXPECT_EQ(ids(tags & std::vector<int>{4, 2}), hit);
  EXPECT_EQ(ids(tags & std::vector<int>{4, 5}), miss);
  EXPECT_EQ(ids(words & std::vector<std::string>{"z", "b"}), hit);
  // "= ANY" agrees on the first element only (see AnyOnSqliteReadsTheFirstElement).
  EXPECT_EQ(ids(SQLValue(3) == vexel::ANY(tags)), hit);
  EXPECT_EQ(ids(SQLValue(7) == vexel::ANY(tags)), miss);
}

// The SQLite containment and overlap forms select from the table again
// instead of the current row, so they hold for every row or for none.
TEST_P(ExpressionsTest, ArrayConditionsOnSqliteSpanTheTable) {
  const vexel::tab arr =
      Table("arr", "id INTEGER, tags TEXT", "id INTEGER, tags INTEGER[]",
            is_sqlite() ? "(1, '[1,2]'), (2, '[3]')" : "(1, '{1,2}'), (2, '{3}')");
  const vexel::array_col tags = arr.array_col("tags");
  auto ids = [&](const vexel::CommonExpr& condition) {
    QueryBuilder q = Builder();
    q.SELECT({arr.col("id")}).FROM(arr).WHERE(condition).ORDER_BY({arr.col("id")});
    return Run(q, {"id"});
  };
  const Rows both{{"1"}, {"2"}};
  EXPECT_EQ(ids(tags.contains({1, 3})), is_sqlite() ? both : Rows{});
  EXPECT_EQ(ids(tags & std::vector<int>{3}), is_sqlite() ? both : Rows{{"2"}});
}

TEST_P(ExpressionsTest, AnyOnSqliteReadsTheFirstElement) {
  const vexel::tab arr = Table("arr", "id INTEGER, tags TEXT", "id INTEGER, tags INTEGER[]",
                               is_sqlite() ? "(1, '[3,1]')" : "(1, '{3,1}')");
  QueryBuilder q = Builder();
  q.SELECT({arr.col("id")}).FROM(arr).WHERE(SQLValue(1) == vexel::ANY(arr.array_col("tags")));
  EXPECT_EQ(Run(q, {"id"}), is_sqlite() ? Rows{} : Rows{{"1"}});
}

TEST_P(ExpressionsTest, ArrayValues) {
  const Rows rows =
      Scalars({Value(vexel::ArrayValue(std::vector<int>{1, 2}), "lit"),
               Value(vexel::string_to_array(vexel::ArrayOfInteger, "4;5", ';'), "ints"),
               Value(vexel::string_to_array(vexel::ArrayOfString, "a,b", ','), "strs")},
              {"lit", "ints", "strs"});
  const Rows expected =
      is_sqlite() ? Rows{{"[1,2]", "[4,5]", "[\"a\",\"b\"]"}} : Rows{{"{1,2}", "{4,5}", "{a,b}"}};
  EXPECT_EQ(rows, expected);
  // The element subscript is valid on PostgreSQL only; SQLite rejects the
  // unquoted path.
  const vexel::tab arr = Table("arr", "id INTEGER, tags TEXT", "id INTEGER, tags INTEGER[]",
                               is_sqlite() ? "(1, '[7,8,9]')" : "(1, '{7,8,9}')");
  QueryBuilder q = Builder();
  q.SELECT({Value(arr.array_col("tags")[2], "e")}).FROM(arr);
  if (is_sqlite()) {
    vexel_test::CaptureLog log;
    EXPECT_FALSE(q.Execute());
  } else {
    EXPECT_EQ(Run(q, {"e"}), (Rows{{"8"}}));
  }
}

TEST_P(ExpressionsTest, CaseAndAggregates) {
  vexel::CASE level;
  level.WHEN(items_.col("price") > SQLValue(4))
      .THEN(SQLValue("high"))
      .WHEN(items_.col("price") > SQLValue(1))
      .THEN(SQLValue("mid"))
      .ELSE(SQLValue("low"))
      .END();
  QueryBuilder q = Builder();
  q.SELECT({items_.col("id"), Value(level, "level")}).FROM(items_).ORDER_BY({items_.col("id")});
  EXPECT_EQ(Run(q, {"id", "level"}),
            (Rows{{"1", "mid"}, {"2", "mid"}, {"3", "low"}, {"4", "high"}, {"5", "high"}}));

  const col price = items_.col("price");
  QueryBuilder agg = Builder();
  agg.SELECT({items_.col("category"), vexel::COUNT(price).AS("n"), vexel::SUM(price).AS("total"),
              vexel::MIN(price).AS("lo"), vexel::MAX(price).AS("hi"), vexel::AVG(price).AS("mean"),
              Value(vexel::GroupConcatExpr(items_.col("name"), ';'), "names")})
      .FROM(items_)
      .GROUP_BY({items_.col("category")})
      .ORDER_BY({items_.col("category")});
  const Rows rows = Run(agg, {"category", "n", "total", "lo", "hi", "mean", "names"});
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(Row(rows[0].begin(), rows[0].begin() + 5), (Row{"bakery", "2", "11", "5", "6"}));
  EXPECT_EQ(Row(rows[2].begin(), rows[2].begin() + 5), (Row{"vegetable", "1", "1", "1", "1"}));
  EXPECT_DOUBLE_EQ(Number(rows[0][5]), 5.5);
  EXPECT_DOUBLE_EQ(Number(rows[1][5]), 2.5);
  EXPECT_TRUE(rows[1][6] == "apple;banana" || rows[1][6] == "banana;apple") << rows[1][6];
  EXPECT_EQ(rows[2][6], "carrot");
}

TEST_P(ExpressionsTest, Windows) {
  vexel::window_option by_category;
  by_category.partition_by = {items_.col("category")};
  col price = items_.col("price");
  by_category.order_by = {price.DESC()};
  by_category.flags.set(vexel::window_option::kPartitionBy).set(vexel::window_option::kOrderBy);
  vexel::window_option overall;
  overall.order_by = {items_.col("price")};
  overall.flags.set(vexel::window_option::kOrderBy);
  QueryBuilder q = Builder();
  q.SELECT({items_.col("name"), vexel::ROW_NUMBER().Over(by_category).AS("rn"),
            vexel::RANK().Over(overall).AS("rk"), vexel::COUNT(price).Over({}).AS("n")})
      .FROM(items_)
      .ORDER_BY({items_.col("id")});
  EXPECT_EQ(Run(q, {"name", "rn", "rk", "n"}), (Rows{{"apple", "1", "3", "5"},
                                                     {"banana", "2", "2", "5"},
                                                     {"carrot", "1", "1", "5"},
                                                     {"donut", "2", "4", "5"},
                                                     {"eclair", "1", "5", "5"}}));
}

TEST_P(ExpressionsTest, Exists) {
  const std::string orders = schema_ + ".orders";
  const SQLExpr sub("SELECT 1 FROM " + orders + " WHERE " + orders + ".item_id = " + schema_ +
                    ".items.id");
  EXPECT_EQ(Names(vexel::EXISTS(sub)), (Rows{{"apple"}, {"carrot"}, {"donut"}}));
  EXPECT_EQ(Names(vexel::NOT_EXISTS(sub)), (Rows{{"banana"}, {"eclair"}}));
}

TEST_P(ExpressionsTest, TimeFunctionsOnFixedTimestamps) {
  const char* at = "2021-01-02 03:04:05";
  const Rows rows = Scalars(
      {Value(vexel::DATE("2021-01-02"), "d"), Value(vexel::TIME("03:04:05"), "t"),
       Value(vexel::EXTRACT(at), "epoch"), Value(vexel::DATE_PART(vexel::YEAR, at), "y"),
       Value(vexel::DATE_PART(vexel::SECOND, at), "s"),
       Value(vexel::DATE_TRUNC(vexel::HOUR, std::string("'") + at + "'"), "h"),
       Value(vexel::TIMEDIFF("2021-01-02", "2021-01-01"), "diff"),
       Value(vexel::TIME_ALGORITHM("2021-01-02 00:00:00", {{"day", 1}, {"hour", -2}}), "moved"),
       Value(vexel::NOW(0), "now_utc"), Value(vexel::CURRENT_TIMESTAMP(1), "local")},
      {"d", "t", "epoch", "y", "s", "h", "diff", "moved", "now_utc", "local"});
  ASSERT_EQ(rows.size(), 1u);
  const Row& r = rows[0];
  EXPECT_EQ(r[0], "2021-01-02");
  EXPECT_EQ(r[1], "03:04:05");
  EXPECT_DOUBLE_EQ(Number(r[2]), 1609556645.0);
  EXPECT_DOUBLE_EQ(Number(r[3]), 2021.0);
  EXPECT_DOUBLE_EQ(Number(r[4]), 5.0);
  EXPECT_EQ(r[5], "2021-01-02 03:00:00");
  EXPECT_DOUBLE_EQ(Number(r[6]), 86400.0);
  EXPECT_EQ(r[7], "2021-01-02 22:00:00");
  EXPECT_EQ(r[8].substr(0, 2), "20");
  EXPECT_EQ(r[9].substr(0, 2), "20");
}

// The texts an UPDATE would assign, run as a SELECT of the same expression.
TEST_P(ExpressionsTest, JsonPathFunctions) {
  const vexel::tab docs = Table("docs", "id INTEGER, doc TEXT", "id INTEGER, doc JSONB",
                                "(1, '{\"a\":{\"b\":1,\"c\":2}}')");
  const col doc = docs.col("doc");
  vexel_test::CaptureLog quiet;
  auto value = [&](const std::map<tessel::DBTYPE, SQLValue>& entries, const char* alias) {
    return col(SQLExpr(entries.at(dialect())), dialect()).AS(alias);
  };
  QueryBuilder q = Builder();
  q.SELECT({value(vexel::JSON_KEY_DELETE(doc, "'{a,b}'"), "removed"),
            value(vexel::JSON_SET(doc, "'{a,b}'", "'5'"), "number"),
            value(vexel::JSON_SET(doc, "'{a,c}'", "'\"x\"'"), "text")})
      .FROM(docs);
  const Rows rows = Run(q, {"removed", "number", "text"});
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(WithoutBlanks(rows[0][0]), "{\"a\":{\"c\":2}}");
  EXPECT_EQ(WithoutBlanks(rows[0][1]), "{\"a\":{\"b\":5,\"c\":2}}");
  EXPECT_EQ(WithoutBlanks(rows[0][2]), "{\"a\":{\"b\":1,\"c\":\"x\"}}");
}

INSTANTIATE_TEST_SUITE_P(Engines, ExpressionsTest,
                         testing::Values(Engine::kSqlite, Engine::kPostgres), EngineName);

}  // namespace
}  // namespace vexel_it
