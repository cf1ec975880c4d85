// The statement builders: the text each dialect renders, where each
// execution goes on the connection (with or without ";") and how a failure
// is reported, the facades' copies, assignment, moves and Reset, and what
// each does without a connection.
#include <gtest/gtest.h>

#include "SQLSeq.h"
#include "support/BuilderChecks.h"
#include "vexel/vexel.h"

namespace {

using vexel::col;
using vexel::DeleteBuilder;
using vexel::InsertBuilder;
using vexel::QueryBuilder;
using vexel::sch;
using vexel::seq;
using Seq = vexel::SeqenceBuilder;
using vexel::tab;
using vexel::UpdateBuilder;
using vexel::WithBuilder;
using vexel_test::all;
using vexel_test::check_routes;
using vexel_test::cols;
using vexel_test::fake;
using vexel_test::ms;
using vexel_test::pg;
using vexel_test::pg_only;
using vexel_test::row;
using vexel_test::sent;
using vexel_test::Strings;
using PerDialectValue = std::map<tessel::DBTYPE, vexel::SQLValue>;

vexel::SQLExpr e(const char* text) { return vexel::SQLExpr(text); }
const tab kT("t");
const tab kST = sch("s").tab("t");
const col kA = kST.col("a");

// SELECT column FROM table, in the dialect of `code`.
QueryBuilder select(const char* column, const char* table = "x", int code = 2) {
  QueryBuilder q(fake(code));
  q.SELECT({col(column)}).FROM(tab(table));
  return q;
}
QueryBuilder sub(const QueryBuilder& outer, const char* column) {
  return select(column, "x", static_cast<int>(outer.db_type()));
}

TEST(Query, TextPerDialect) {
  const vexel_test::TextRow<QueryBuilder> rows[] = {
      {[](QueryBuilder& q) { q.SELECT({kA}).FROM(kST).JOIN(sch("s").view("v")).GROUP_BY({kA}); },
       pg("SELECT t.a FROM s.t JOIN v GROUP BY t.a",
          "SELECT s.t.a FROM s.t JOIN s.v GROUP BY s.t.a")},
      {[](QueryBuilder& q) { q.FROM(kT).ORDER_BY({col("c").ASC()}).LIMIT(9).OFFSET(20); },
       ms("SELECT  FROM t ORDER BY c ASC  LIMIT 9 OFFSET 20",
          "SELECT  FROM t ORDER BY c ASC  OFFSET 20 ROWS FETCH NEXT 9 ROWS ONLY")},
      // AND or OR with nothing to extend changes nothing.
      {[](QueryBuilder& q) { q.FROM(kT).AND(e("x")).OR(e("y")).LIMIT(10); },
       ms("SELECT  FROM t LIMIT 10", "SELECT  FROM t OFFSET 0 ROWS FETCH NEXT 10 ROWS ONLY")},
      // SQL Server has no select expression and no offset without a limit.
      {[](QueryBuilder& q) {
         q.FROM(kT).OFFSET(20).SELECT(vexel::SQLValue("x")).SELECT(vexel::SQLValue(1));
       },
       ms("SELECT 1 FROM t OFFSET 20", "SELECT  FROM t")},
      // Each join pairs with the ON of its index, the last has none; AND and
      // OR extend HAVING before WHERE before the last ON, unbracketed.
      {[](QueryBuilder& q) {
         q.FROM(kT).JOIN(tab("u")).ON(e("o1")).LEFT_JOIN(tab("w")).ON(e("o2")).AND(e("o3"));
         q.LEFT_JOIN(vexel::view("x")).RIGHT_JOIN(tab("y")).RIGHT_JOIN(vexel::view("z"));
       },
       all("SELECT  FROM t JOIN u ON o1 LEFT JOIN w ON o2 AND o3 LEFT JOIN x RIGHT JOIN y RIGHT "
           "JOIN z")},
      // An ON given before its JOIN still pairs by index; a condition given
      // as a temporary renders as a copied one, finished or not.
      {[](QueryBuilder& q) {
         q.FROM(kT).ON(e("o1")).JOIN(tab("u")).ON(col("a") == col("b")).ON(e("o3")).AND(e("x"));
         q.JOIN(tab("v")).JOIN(tab("w")).JOIN(tab("y")).WHERE((col("c") == 1).OR(col("c") == 2));
         q.GROUP_BY({col("g")}).HAVING(col("h") > vexel::SQLValue(3));
       },
       all("SELECT  FROM t JOIN u ON o1 JOIN v ON a = b JOIN w ON o3 AND x JOIN y WHERE (c = 1 OR "
           "c = 2) GROUP BY g HAVING h > 3")},
      {[](QueryBuilder& q) {
         q.FROM(sub(q, "f"), "sf").JOIN(sub(q, "j"), "sj").ON(e("o")).WHERE(e("a")).AND(e("b"));
         q.LEFT_JOIN(sub(q, "l"), "sl").RIGHT_JOIN(sub(q, "r"), "").OR(e("c"));
       },
       all("SELECT  FROM (SELECT f FROM x) AS sf JOIN (SELECT j FROM x) AS sj ON o LEFT JOIN "
           "(SELECT l FROM x) AS sl RIGHT JOIN (SELECT r FROM x) WHERE a AND b OR c")},
      // Clauses replace, and AND goes to HAVING though WHERE is set.
      {[](QueryBuilder& q) {
         q.SELECT({col("old")}).SELECT({col("a")}).FROM(tab("old")).FROM(kT).WHERE(e("old"));
         q.WHERE(e("w")).GROUP_BY({col("old")}).GROUP_BY(cols("g", "h")).HAVING(e("old"));
         q.HAVING(e("h")).ORDER_BY({col("old")}).ORDER_BY({col("o")}).AND(e("x"));
       },
       all("SELECT a FROM t WHERE w GROUP BY g , h HAVING h AND x ORDER BY o")},
      // Without FROM the other clauses are kept, and only SQL Server shows them;
      // only a leading empty name goes without separator.
      {[](QueryBuilder& q) {
         q.SELECT(e("n")).SELECT({vexel::func("now"), col("a"), col(""), col("b")});
         q.WHERE(e("w")).LIMIT(1).OFFSET(2);
       },
       ms("SELECT na ,  , b",
          "SELECT a ,  , b FROM  WHERE w OFFSET 2 ROWS FETCH NEXT 1 ROWS ONLY")},
      // Set operations follow paging in a fixed order; the last operand wins.
      {[](QueryBuilder& q) {
         q.FROM(kT).LIMIT(1).INTERSECT(sub(q, "i")).EXCEPT(sub(q, "e")).UNION(sub(q, "old"));
         q.UNION(sub(q, "u")).UNION_ALL(sub(q, "ua"));
       },
       ms("SELECT  FROM t LIMIT 1 UNION ALL SELECT ua FROM x UNION SELECT u FROM x EXCEPT SELECT e "
          "FROM x INTERSECT SELECT i FROM x",
          "SELECT  FROM t OFFSET 0 ROWS FETCH NEXT 1 ROWS ONLY UNION ALL SELECT ua FROM x UNION "
          "SELECT u FROM x EXCEPT SELECT e FROM x INTERSECT SELECT i FROM x")},
  };
  vexel_test::check_texts(rows);
}

// Builds with `build`, then runs `form`, or Execute.
template <typename Builder>
vexel_test::Run on(void (*build)(Builder&), bool (*form)(Builder&) = nullptr) {
  return [build, form](const std::shared_ptr<vexel_test::FakeConnect>& conn) {
    Builder b(conn);
    build(b);
    return form != nullptr ? form(b) : b.Execute();
  };
}

// The time-out, collation and loop forms of a query or WITH statement:
// dedicated operations on PostgreSQL, plain queries elsewhere.
template <typename Builder, int TimeOut>
void check_query_forms(void (*build)(Builder&), const std::string& s, const std::string& kind) {
  const std::string t = std::to_string(TimeOut);
  check_routes(on<Builder>(build, [](Builder& b) { return b.ExecuteQueryUDT(TimeOut); }),
               pg_only("ExecuteQueryUDT(" + t + ")" + s, "ExecuteQuery" + s),
               kind + "::ExecuteQueryUDT", all("ExecuteQueryUDT failed,time_out:" + t + ", "));
  check_routes(on<Builder>(build, [](Builder& b) { return b.ExecuteSortByCollate("C"); }),
               pg_only("ExecuteSortByCollate(C)" + s, "ExecuteQuery" + s),
               kind + "::ExecuteSortByCollate", all("ExecuteQueryUDT failed,collate_name:C, "));
  check_routes(on<Builder>(build, [](Builder& b) { return b.ExecuteLoop(); }),
               pg_only("ExecuteLoop" + s, "ExecuteQuery" + s), kind + "::ExecuteLoop",
               all("ExecuteQueryUDT failed,"));
}

TEST(QueryAndWith, ExecutionRoutes) {
  const auto q = [](QueryBuilder& b) { b.SELECT({col("a")}).FROM(kT); };
  const std::string s = ":SELECT a FROM t";
  check_routes(on<QueryBuilder>(q), ms("ExecuteQuery" + s + ";", "ExecuteQuery" + s),
               "Query::Execute", all("ExecuteQuery failed "));
  // A later FROM keeps the public-view mark.
  check_routes(on<QueryBuilder>([](QueryBuilder& b) {
                 b.SELECT({col("a")}).FROM(sch("public").view("v")).FROM(kT);
               }),
               ms("ExecuteQueryContainView" + s + ";", "ExecuteQueryContainView" + s),
               "Query::ExecuteQueryContainView", all("ExecuteQuery failed "));
  check_query_forms<QueryBuilder, 30>(q, s, "Query");
  // A subquery that read a public view passes the mark on; a joined public
  // view, or a set operand that read one, does not.
  auto conn = fake(2);
  QueryBuilder b(conn), s1(fake(2)), s2(fake(2));
  const vexel::view pv = sch("public").view("v");
  EXPECT_TRUE(b.FROM(kT).JOIN(pv).UNION(s1.FROM(pv)).Execute() &&
              b.RIGHT_JOIN(s2.FROM(pv), "x").Execute());
  EXPECT_EQ(conn->count("ExecuteQueryContainView"), 1);
  // A WITH statement never ends in ";".
  const auto w = [](WithBuilder& b) { b.WithDo("SELECT 1"); };
  const std::string ws = ":WITH  SELECT 1";
  check_routes(on<WithBuilder>(w), all("ExecuteQuery" + ws), "With::Execute",
               all("ExecuteQuery failed "));
  check_query_forms<WithBuilder, 9>(w, ws, "With");
}

// Texts are taken when given; a copy is independent, keeps the statement's
// connection and starts without the view mark; an assigned facade shares
// the statement; Reset starts over in the connection's current dialect.
TEST(QueryAndWith, FacadeLife) {
  auto conn = fake(1);
  QueryBuilder q(conn), pg(fake(2));
  q.SELECT({kA}).FROM(sch("public").view("v")).UNION(pg.SELECT({kA}));
  pg.WHERE(e("later"));
  QueryBuilder copy(q);
  copy.WHERE(e("w"));
  auto assigned = std::make_unique<QueryBuilder>(fake(3));
  *assigned = q;
  assigned->LIMIT(1);
  EXPECT_TRUE(copy.Execute() && q.Execute());
  conn->set_db_type(2);
  q.Reset();
  assigned.reset();                        // either may go first
  EXPECT_EQ(conn->count("GetDBType"), 4);  // the facade, then the implementation, twice
  EXPECT_TRUE(q.SELECT({kA}).Execute());
  // The copy has no facade connection: Reset falls back to PostgreSQL.
  vexel_test::CaptureLog log;
  copy.Reset();
  EXPECT_EQ(copy.db_type(), tessel::DB_POSTGRESQL);
  EXPECT_EQ(log.texts(), Strings{"6|[vexel::QueryBuilder::Reset]db_conn is nullptr.["});
  // A WITH copy and an assigned one are independent and keep the
  // statement's connection; a move hands the statement over.
  WithBuilder w(conn), w_assigned(fake(2));
  w.RECURSIVE().WithDo("SELECT 1");
  WithBuilder w_copy(w);
  w_assigned = w;
  WithBuilder w_moved(std::move(w));
  EXPECT_TRUE(w_copy.WithDo("SELECT 2").Execute() && w_assigned.WithDo("SELECT 3").Execute() &&
              w_moved.Execute());
  EXPECT_EQ(
      sent(*conn),
      (Strings{"ExecuteQuery:SELECT t.a FROM v WHERE w UNION SELECT s.t.a;",
               "ExecuteQueryContainView:SELECT t.a FROM v LIMIT 1 UNION SELECT s.t.a;",
               "ExecuteQuery:SELECT s.t.a;", "ExecuteQuery:WITH RECURSIVE  SELECT 2",
               "ExecuteQuery:WITH RECURSIVE  SELECT 3", "ExecuteQuery:WITH RECURSIVE  SELECT 1"}));
}

TEST(With, TextIsTheSameInEveryDialect) {
  const vexel_test::TextRow<WithBuilder> rows[] = {
      // A bare "," between named statements.
      {[](WithBuilder& w) { w.RECURSIVE().AS("a", select("a")).AS("b", select("b", "y")); },
       all("WITH RECURSIVE a AS (SELECT a FROM x),b AS (SELECT b FROM y) ")},
      {[](WithBuilder& w) {
         w.AS("t", select("a")).AS("t", select("b")).WithDo("x").WithDo(select("c"));
       },
       all("WITH t AS (SELECT a FROM x),t AS (SELECT b FROM x) SELECT c FROM x")},
      {[](WithBuilder&) {}, all("WITH  ")},
      // Any kind of builder, its text taken when given.
      {[](WithBuilder& w) {
         DeleteBuilder d(fake(2));
         w.AS("i", InsertBuilder(fake(2)).INSERT_INTO(kT)).WithDo(d.DELETE_FROM(kT).WHERE(e("w")));
         d.WHERE(e("later"));
       },
       all("WITH i AS (INSERT INTO t() VALUES) DELETE FROM t WHERE w")},
  };
  vexel_test::check_texts(rows);
}

// Without a connection the facades take PostgreSQL (only some say so), and
// execution reports the missing connection without rendering.
TEST(Builders, WithoutConnection) {
  const auto none = [](int level, const std::string& site) {
    return std::to_string(level) + "|[vexel::" + site + (level == 6 ? "]db_conn" : "]db_conn_") +
           " is nullptr.[";
  };
  vexel_test::CaptureLog log;
  QueryBuilder q(nullptr);
  WithBuilder w(nullptr);
  vexel::InsertBuilder i(nullptr);
  vexel::UpdateBuilder u(nullptr);
  vexel::DeleteBuilder d(nullptr);
  Seq s(nullptr);
  EXPECT_EQ(q.SELECT({kA}).FROM(kST).tosql(), "SELECT s.t.a FROM s.t");
  EXPECT_FALSE(q.Execute() || q.ExecuteQueryUDT(1) || q.ExecuteSortByCollate("C") ||
               q.ExecuteLoop() || w.Execute() || i.Execute() || u.WHERE(col("i") == 1).Execute() ||
               d.WHERE(col("i") == 1).Execute() || s.Execute());
  q.Reset();
  i.Reset();
  // The SQLite sequence class checks its connection itself.
  EXPECT_FALSE(vexel::make_seq(tessel::DB_SQLITE, nullptr)->Execute());
  EXPECT_EQ(log.texts(),
            (Strings{none(6, "QueryBuilder::QueryBuilder"), none(6, "DeleteBuilder::DeleteBuilder"),
                     none(5, "PGQuery::Execute"), none(5, "PGQuery::ExecuteQueryUDT"),
                     none(5, "PGQuery::ExecuteSortByCollate"), none(5, "PGQuery::ExecuteLoop"),
                     none(5, "PGWith::Execute"), none(5, "PGInsert::Execute"),
                     none(5, "PGUpdate::Execute"), none(5, "PGDelete::Execute"),
                     none(5, "PGSeq::Execute"), none(6, "QueryBuilder::Reset"),
                     none(6, "InsertBuilder::Reset"), none(5, "SQLiteSeq::Execute")}));
  EXPECT_EQ(log.lines()[0].module, "Vexel");
}

vexel::SQLValue v(int n) { return vexel::SQLValue(n); }
vexel::SQLValue v(const char* s) { return vexel::SQLValue(s); }
const PerDialectValue kEachDialect = {{tessel::DB_SQLITE, vexel::SQLValue(1)},
                                      {tessel::DB_POSTGRESQL, vexel::SQLValue(2)},
                                      {tessel::DB_SQLSERVER, vexel::SQLValue(3)},
                                      {vexel_test::db(7), vexel::SQLValue(7)}};

void t_ab(InsertBuilder& b) { b.INSERT_INTO(kT).COLUMNS(cols("a", "b")); }

TEST(Insert, TextPerDialect) {
  const std::string merge =
      "MERGE INTO t USING (VALUES(1,'x')) AS Excluded(a,b) ON(t.a = Excluded.a) WHEN NOT MATCHED "
      "THEN INSERT(a,b) VALUES(1,'x')";
  const vexel_test::TextRow<InsertBuilder> rows[] = {
      // Rows add up; a condition without conflict lands behind them.
      {[](InsertBuilder& b) {
         b.VALUES(row(1, "x"))
             .VALUES(row(2, "y"))
             .WHERE(col("a") == 1)
             .AND(col("b") == 2)
             .OR(col("b") == 3);
       },
       ms("INSERT INTO t(a,b) VALUES(1,'x'),(2,'y') WHERE a = 1 AND b = 2 OR b = 3",
          "INSERT INTO t(a,b) VALUES (1,'x'),(2,'y')")},
      // Without SET nothing is updated, whatever DO_UPDATE says.
      {[](InsertBuilder& b) { b.VALUES(row(1, "x")).ON_CONFLICT({col("a")}).DO_UPDATE(); },
       ms("INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO NOTHING ", merge + ";")},
      // Assignments in column order, the last SET of a column wins.
      {[](InsertBuilder& b) {
         b.VALUES(row(1, "x")).ON_CONFLICT({col("a")}).DO_NOTHING().SET(col("c"), v(9));
         b.SET(col("b"), col("b").EXCLUDED()).SET(col("c"), v(5)).RETURNING({col("a")});
       },
       ms("INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a) DO UPDATE SET b = EXCLUDED.b, c = 5 "
          "RETURNING a",
          merge + " WHEN MATCHED THEN UPDATE SET b = EXCLUDED.b,c = 5 OUTPUT inserted.a;")},
      {[](InsertBuilder& b) {
         b.VALUES(row(1, "x")).ON_CONFLICT(cols("a", "b")).SET(col("b"), vexel::SQLExpr("b+1"));
       },
       ms("INSERT INTO t(a,b) VALUES(1,'x') ON CONFLICT (a,b) DO UPDATE SET b = b+1",
          "MERGE INTO t USING (VALUES(1,'x')) AS Excluded(a,b) ON(t.a = Excluded.a AND t.b = "
          "Excluded.b) WHEN NOT MATCHED THEN INSERT(a,b) VALUES(1,'x') WHEN MATCHED THEN UPDATE "
          "SET b = b+1;")},
      // A second RETURNING replaces the first.
      {[](InsertBuilder& b) {
         b.INSERT_INTO(kST).COLUMNS({kA}).RETURNING({col("x")}).RETURNING({kA});
       },
       {"INSERT INTO s.t(t.a) VALUES RETURNING t.a",
        "INSERT INTO s.t(s.t.a) VALUES RETURNING s.t.a",
        "INSERT INTO s.t(s.t.a) OUTPUT Inserted.s.t.a VALUES ",
        "INSERT INTO s.t(s.t.a) VALUES RETURNING s.t.a"}},
  };
  vexel_test::check_texts(rows, t_ab);
}

// INSERT ... SELECT: the query takes the place of the rows.
TEST(InsertSelect, TextPerDialect) {
  const auto from_u = [](InsertBuilder& b) {
    QueryBuilder q(fake(2));
    b.SELECT(q.SELECT({col("x")}).FROM(tab("u")));
  };
  const vexel_test::TextRow<InsertBuilder> rows[] = {
      {[&](InsertBuilder& b) {
         from_u(b);
         b.RETURNING({col("a")});
       },
       ms("INSERT INTO t(a,b) SELECT x FROM u RETURNING a",
          "INSERT INTO t(a,b) OUTPUT Inserted.a SELECT x FROM u")},
      {[&](InsertBuilder& b) {
         from_u(b);
         b.ON_CONFLICT({col("a")}).SET(col("b"), col("b").EXCLUDED());
       },
       {"INSERT INTO t(a,b) SELECT * FROM (SELECT x FROM u) WHERE true ON CONFLICT (a) DO UPDATE "
        "SET b = EXCLUDED.b",
        "INSERT INTO t(a,b) SELECT x FROM u ON CONFLICT (a) DO UPDATE SET b = EXCLUDED.b",
        "MERGE INTO t USING (SELECT x FROM u) AS Excluded(a,b) ON(t.a = Excluded.a) WHEN NOT "
        "MATCHED THEN INSERT(a,b) VALUES(Excluded.a,Excluded.b) WHEN MATCHED THEN UPDATE SET b = "
        "EXCLUDED.b;",
        "INSERT INTO t(a,b) SELECT x FROM u ON CONFLICT (a) DO UPDATE SET b = EXCLUDED.b"}},
  };
  vexel_test::check_texts(rows, t_ab);
}

void batch_k_c(UpdateBuilder& b) { b.BATCH_SET({col("c")}).BATCH_CONDITION({col("k")}); }

TEST(Update, TextPerDialect) {
  const std::string batch =
      "UPDATE t SET c=tmp.c FROM (VALUES (1, 'a') , (2, 'b') )  AS tmp(k,c) WHERE t.k=tmp.k";
  const std::string batch2 =
      "UPDATE t SET c=tmp.c,d=tmp.d FROM (VALUES (1, 2, 'a', 5) , (3, 4, 'b', 6) )  AS "
      "tmp(k1,k2,c,d) WHERE t.k1=tmp.k1 AND t.k2=tmp.k2 WHERE z = 0";
  const std::string multi = "UPDATE t SET a = 0, x=y FROM s,r WHERE i=j,k=l";
  const std::string set = "UPDATE t SET a = a+1, b = (SELECT  FROM u), c = ";
  const vexel_test::TextRow<UpdateBuilder> rows[] = {
      // Assignments in name order, the last SET of a column wins, RETURNING adds
      // up; AND and OR extend the condition unbracketed.
      {[](UpdateBuilder& b) {
         b.SET(col("b"), v("y")).SET(col("a"), col("c")).SET(col("b"), v("x")).WHERE(col("i") == 3);
         b.AND(col("i") == 4).OR(col("i") == 5).RETURNING({col("i")}).RETURNING({col("a")});
       },
       ms("UPDATE t SET a = c, b = 'x' WHERE i = 3 AND i = 4 OR i = 5 RETURNING i,a",
          "UPDATE t SET a = c, b = 'x' OUTPUT inserted.i,inserted.a WHERE i = 3 AND i = 4 OR i = "
          "5")},
      // With no assignment the trim cuts into the keyword.
      {[](UpdateBuilder&) {}, all("UPDATE t SE")},
      {[](UpdateBuilder& b) {
         b.SET(col("a"), e("a+1")).SET(col("b"), QueryBuilder(fake(2)).FROM(tab("u")));
         b.SET(col("c"), std::vector<int>{1}).SET(col("d"), std::vector<std::string>{"x"});
       },
       pg(set + "json_array(1), d = json_array(\"x\")",
          set + "ARRAY[1]::INTEGER[], d = ARRAY[\"x\"]::VARCHAR[]")},
      {[](UpdateBuilder& b) { b.SET(col("a"), v(1)).VACUUM({tab("a")}).VACUUM({tab("b")}); },
       {"", "VACUUM a;VACUUM b;", "UPDATE t SET a = 1", "VACUUM a;VACUUM b;"}},
      // The short form, no blank between table and column, is SQLite's alone;
      // a per-dialect value takes the builder's own entry.
      {[](UpdateBuilder& b) { b.UPDATE(col("x")).SET(col("a"), kEachDialect); },
       {"UPDATE tx", "UPDATE t SET a = 2", "UPDATE t SET a = 3", "UPDATE t SET a = 7"}},
      {[](UpdateBuilder& b) {
         batch_k_c(b);
         b.BATCH_VALUES(cols("k", "c"), {row(1, "a"), row(2, "b")});
       },
       {"UPDATE t SET c= CASE  WHEN k=1 THEN 'a' WHEN k=2 THEN 'b' END  WHERE k IN (1,2)", batch,
        "UPDATE t SE", batch}},
      {[](UpdateBuilder& b) {
         b.BATCH_SET(cols("c", "d")).BATCH_CONDITION(cols("k1", "k2"));
         b.BATCH_VALUES(cols("k1", "k2", "c", "d"), {row(1, 2, "a", 5), row(3, 4, "b", 6)});
         b.WHERE(col("z") == 0);
       },
       {"UPDATE t SET c= CASE  WHEN k1=1 AND k2=2 THEN 'a' WHEN k1=3 AND k2=4 THEN 'b' END ,d= "
        "CASE  WHEN k1=1 AND k2=2 THEN 5 WHEN k1=3 AND k2=4 THEN 6 END  WHERE (k1=1 AND k2=2) OR "
        "(k1=3 AND k2=4) WHERE z = 0",
        batch2, "UPDATE t SE WHERE z = 0", batch2}},
      {[](UpdateBuilder& b) {
         b.SET(col("a"), v(0)).UNION_SET(col("x"), col("y")).UNION_FROM({tab("s"), tab("r")});
         b.UNION_CONDITION(col("i"), col("j")).UNION_CONDITION(col("k"), col("l"));
       },
       {"UPDATE t SET a = 0, x=y FROM s,r WHERE i=j AND k=l", multi, "UPDATE t SET a = 0", multi}},
  };
  vexel_test::check_texts(rows, [](UpdateBuilder& b) { b.UPDATE(kT); });
  // BATCH_VALUES: rejected input leaves the builder as it was; accepted
  // twice, the columns add up and the rows are replaced.
  UpdateBuilder b(fake(2));
  batch_k_c(b.UPDATE(kT).WHERE(col("z") == 0));
  vexel_test::CaptureLog log;
  b.BATCH_VALUES({col("k")}, {}).BATCH_VALUES({}, {row(1)});
  b.BATCH_VALUES(cols("k", "c"), {row(1, 2, 3)});
  // A per-dialect value without the builder's entry assigns nothing.
  b.SET(col("a"), PerDialectValue{{tessel::DB_SQLITE, v(1)}});
  const std::string rejected = "5|[vexel::SQLUpdate::BATCH_VALUES]";
  EXPECT_EQ(log.texts(),
            (Strings{rejected + "tmp_values is empty.[", rejected + "tmp_cols is empty.[",
                     rejected + "tmp_cols.size() is not equal to tmp_values[0].size().[",
                     "5|[vexel::UpdateBuilder::SET]no value for db_type 2.["}));
  EXPECT_EQ(b.tosql(), "UPDATE t SET c=tmp.c FROM  AS tmp() WHERE t.k=tmp.k WHERE z = 0");
  b.BATCH_VALUES({col("k")}, {row(1)}).BATCH_VALUES({col("c")}, {row(9), row(8)});
  EXPECT_EQ(
      b.tosql(),
      "UPDATE t SET c=tmp.c FROM (VALUES (9) , (8) )  AS tmp(k,c) WHERE t.k=tmp.k WHERE z = 0");
}

TEST(Delete, TextPerDialect) {
  const vexel_test::TextRow<DeleteBuilder> rows[] = {
      {[](DeleteBuilder&) {}, all("DELETE FROM t")},
      // SQL Server names the removed rows before the condition.
      {[](DeleteBuilder& b) {
         b.WHERE(col("i") == 3).RETURNING({col("a")}).RETURNING(cols("b", "c", "d", "e"));
       },
       ms("DELETE FROM t WHERE i = 3 RETURNING a,b,c,d,e",
          "DELETE FROM t OUTPUT deleted.a,deleted.b,deleted.c,deleted.d,deleted.e WHERE i = 3")},
      // An empty condition is not special-cased: the text keeps both blanks.
      {[](DeleteBuilder& b) { b.AND(col("x") == 1).OR(col("y") == 2); },
       all("DELETE FROM t WHERE  AND x = 1 OR y = 2")},
      // SQLite drops the table's schema.
      {[](DeleteBuilder& b) { b.DELETE_FROM(vexel::sch("m").tab("t")).RETURNING({kA}); },
       {"DELETE FROM t RETURNING t.a", "DELETE FROM m.t RETURNING s.t.a",
        "DELETE FROM m.t OUTPUT deleted.s.t.a", "DELETE FROM m.t RETURNING s.t.a"}},
  };
  vexel_test::check_texts(rows, [](DeleteBuilder& b) { b.DELETE_FROM(kT); });
}

const tab kAT = vexel::sch("a").tab("t");

void insert_x(InsertBuilder& b) {
  t_ab(b);
  b.VALUES(row(1, "x")).EXCLUDE(vexel::CURRVAL(seq("s.q"), kT));
}
void update_i(UpdateBuilder& b) { b.UPDATE(kT).SET(col("a"), v(1)).WHERE(col("i") == 1); }
void delete_i(DeleteBuilder& b) { b.DELETE_FROM(kT).WHERE(col("i") == 1); }

// Inserts, updates and deletes go to ExecuteUpdate, or ExecuteReturning
// once RETURNING was given; PostgreSQL reads the sequence after a plain
// insert, and PostgreSQL and SQLite end a plain delete with ";".
TEST(DataChange, ExecutionRoutes) {
  const std::string ins = ":INSERT INTO t(a,b) VALUES(1,'x')", up = ":UPDATE t SET a = 1";
  const std::string del = ":DELETE FROM t", failed = "ExecuteQuery failed ";
  check_routes(
      on<InsertBuilder>(insert_x),
      {"ExecuteUpdate" + ins, "ExecuteUpdate" + ins + "\nExecuteQuery:SELECT last_value FROM s.q;",
       "ExecuteUpdate:INSERT INTO t(a,b) VALUES (1,'x')", "ExecuteUpdate" + ins},
      "Insert::Execute", all(failed));
  check_routes(on<InsertBuilder>([](InsertBuilder& b) { insert_x(b.RETURNING({col("a")})); }),
               ms("ExecuteReturning" + ins + " RETURNING a",
                  "ExecuteReturning:INSERT INTO t(a,b) OUTPUT Inserted.a VALUES (1,'x')"),
               "Insert::ExecuteReturning", all(failed));
  check_routes(on<UpdateBuilder>(update_i), all("ExecuteUpdate" + up + " WHERE i = 1"),
               "Update::Execute", all(failed));
  check_routes(on<UpdateBuilder>([](UpdateBuilder& b) { update_i(b.RETURNING({col("i")})); }),
               ms("ExecuteReturning" + up + " WHERE i = 1 RETURNING i",
                  "ExecuteReturning" + up + " OUTPUT inserted.i WHERE i = 1"),
               "Update::ExecuteReturning", all(failed));
  check_routes(on<DeleteBuilder>(delete_i),
               ms("ExecuteUpdate" + del + " WHERE i = 1;", "ExecuteUpdate" + del + " WHERE i = 1"),
               "Delete::Execute", all(failed));
  check_routes(on<DeleteBuilder>([](DeleteBuilder& b) { delete_i(b.RETURNING({col("i")})); }),
               ms("ExecuteReturning" + del + " WHERE i = 1 RETURNING i",
                  "ExecuteReturning" + del + " OUTPUT deleted.i WHERE i = 1"),
               "Delete::ExecuteReturning", all(failed));
}

// SQLite sets the value and reads it back, and runs next values through the
// sequence operations; the others run one query, the set text first.
TEST(Seqence, ExecutionRoutes) {
  const std::string failed = "ExecuteQuery failed ", where = "WHERE name = 't';";
  const std::string read = "\nExecuteQuery:SELECT seq  FROM sqlite_sequence " + where;
  // A qualified sequence is used as given.
  check_routes(on<Seq>([](Seq& b) { b.NEXT_VAL(seq("x.s"), kAT); }),
               pg("SeqenceExecute:SELECT seq FROM a.sqlite_sequence " + where,
                  "ExecuteQuery:SELECT nextval('x.s') AS seq;"),
               "Seq::Execute", pg("SeqenceExecute failed ", failed));
  check_routes(on<Seq>([](Seq& b) { b.MANUAL_NEXT_VAL(seq("s"), kAT, col("id")); }),
               pg("SeqenceExecuteManual:SELECT max(id) FROM a.t;",
                  "ExecuteQuery:SELECT nextval('a.s') AS seq;"),
               "Seq::Execute", pg("SeqenceExecuteManual failed ", failed));
  check_routes(on<Seq>([](Seq& b) { b.NEXT_VAL(seq("s"), kAT).SET_VAL(seq("s"), 0, kAT); }),
               pg("ExecuteUpdate:UPDATE sqlite_sequence SET seq = 0 " + where + read,
                  "ExecuteQuery:SELECT setval('a.s'::regclass, 0, true);"),
               "Seq::Execute", pg("Execute failed \n" + failed, failed));
  check_routes(
      on<Seq>([](Seq& b) { b.SET_VAL(seq("s"), vexel::MAX(col("id")), kAT); }),
      pg("ExecuteUpdate:UPDATE sqlite_sequence SET seq = (SELECT MAX(id) FROM a.t) " + where + read,
         "ExecuteQuery:SELECT setval('a.s', MAX(id)) FROM a.t;"),
      "Seq::Execute", pg("Execute failed \n" + failed, failed));
  // Without a schema in the table name PostgreSQL uses none, and warns.
  Seq b(fake(2));
  b.NEXT_VAL(seq("s"), kT).SET_VAL(seq("s"), 3, kT);
  vexel_test::CaptureLog log;
  EXPECT_EQ(b.tosql_next(), "SELECT nextval('s') AS seq");
  EXPECT_EQ(b.tosql_set(), "SELECT setval('s'::regclass, 3, true)");
  EXPECT_EQ(log.texts(), (Strings{"4|[vexel::PGSeq::tosql_next]No found schema name.[",
                                  "4|[vexel::PGSeq::tosql_set]No found schema name.["}));
}

// Copies are independent and keep the statement's connection (and
// RETURNING); assigned builders share the statement; Reset starts over and
// forgets RETURNING; a moved-from delete has no implementation left.
TEST(DataChange, FacadeLife) {
  auto conn = fake(1);
  InsertBuilder i(conn), i_shared(fake(2));
  UpdateBuilder u(conn), u_shared(fake(2));
  DeleteBuilder d(conn);
  Seq s(conn);
  t_ab(i.RETURNING({col("a")}));
  update_i(u.RETURNING({col("a")}));
  d.DELETE_FROM(kT).RETURNING({col("i")});
  s.NEXT_VAL(seq("s"), kAT);
  InsertBuilder i_copy(i);
  UpdateBuilder u_copy(u);
  DeleteBuilder d_copy(d);
  Seq s_copy(s);
  i_shared = i;
  u_shared = u;
  i_shared.VALUES(row(3, 4));
  u_shared.SET(col("c"), v(3));
  DeleteBuilder moved(std::move(d_copy)), d_shared(fake(2)), d_taken(fake(2));
  d_shared = d;
  d_taken = std::move(d_shared);  // takes over a statement still shared with d
  EXPECT_TRUE(i_copy.VALUES(row(1, 2)).Execute() && u_copy.SET(col("b"), v(2)).Execute() &&
              moved.WHERE(col("i") == 2).Execute() && s_copy.NEXT_VAL(seq("q"), kT).Execute());
  EXPECT_EQ(
      i.tosql() + "|" + u.tosql() + "|" + d.tosql() + "|" + s.tosql_next() + "|" + d_taken.tosql(),
      "INSERT INTO t(a,b) VALUES(3,4) RETURNING a|UPDATE t SET a = 1, c = 3 WHERE i = 1 "
      "RETURNING a|DELETE FROM t RETURNING i|SELECT seq FROM a.sqlite_sequence WHERE name = 't'|"
      "DELETE FROM t RETURNING i");
  i.Reset();
  u.Reset();
  EXPECT_EQ(i.tosql() + "|" + u.tosql(), "INSERT INTO () VALUES|UPDATE  SE");
  t_ab(i);
  update_i(u);
  EXPECT_TRUE(i.VALUES(row(5, 6)).Execute() && u.Execute());
  EXPECT_EQ(sent(*conn),
            (Strings{"ExecuteReturning:INSERT INTO t(a,b) VALUES(1,2) RETURNING a",
                     "ExecuteReturning:UPDATE t SET a = 1, b = 2 WHERE i = 1 RETURNING a",
                     "ExecuteReturning:DELETE FROM t WHERE i = 2 RETURNING i",
                     "SeqenceExecute:SELECT seq FROM sqlite_sequence WHERE name = 't';",
                     "ExecuteUpdate:INSERT INTO t(a,b) VALUES(5,6)",
                     "ExecuteUpdate:UPDATE t SET a = 1 WHERE i = 1"}));
  vexel_test::CaptureLog log;
  EXPECT_EQ(d_copy.tosql(), "");  // NOLINT(bugprone-use-after-move)
  EXPECT_FALSE(d_copy.Execute());
  EXPECT_EQ(log.texts(), (Strings{"5|[vexel::DeleteBuilder::tosql]ptr_builder_ is nullptr.[",
                                  "5|[vexel::DeleteBuilder::Execute]ptr_builder_ is nullptr.["}));
}

}  // namespace
