// Computed values on both engines: the rows of each built query against
// those of the same query written by hand.
#include "Engines.h"

namespace vexel_it {
namespace {

using vexel::calc;
using vexel::col;
using vexel::SafeValue;
using vexel::SQLValue;

class ComputedTest : public EngineTest {
 protected:
  // Tables in the engine's dialect, so that functions take its forms.
  vexel::tab T(const char* name) const {
    vexel::sch s(s_);
    s.set_db_type(lite() ? tessel::DB_SQLITE : tessel::DB_POSTGRESQL);
    return s.tab(name);
  }
  // `q` reads `want`, and so does the hand-written query (PostgreSQL's own
  // text when given).
  template <typename Builder>
  void Same(Builder& q, const std::string& sqlite, const std::string& postgres, const char* want) {
    const Rows got = Run(q);
    EXPECT_EQ(got, R(want)) << q.tosql() << "\n" << ErrorOf(*db_);
    EXPECT_EQ(Query(lite() || postgres.empty() ? sqlite : postgres), got) << q.tosql();
  }
};

TEST_P(ComputedTest, ArithmeticAndSubqueries) {
  const vexel::tab i = T("items"), o = T("orders");
  const col price = i.col("price"), qty = o.col("qty");
  vexel::QueryBuilder q(db_);
  q.SELECT({o.col("id"), (price * qty).AS("gross"), ((calc(price) - 1) * -qty / 2).AS("x"),
            (qty % 3).AS("m"), calc(1).AS("lvl")});
  q.FROM(o).JOIN(i).ON(o.col("item_id") == i.col("id"));
  // (a OR b) AND c: the condition's OR brackets, the builder's AND joins.
  q.WHERE((price * qty > SQLValue(9)).OR(qty == 1)).AND(o.col("id") != SQLValue(1));
  q.ORDER_BY({(price * qty).DESC()});
  Same(q,
       "SELECT o.id, i.price * o.qty AS gross, (i.price - 1) * -o.qty / 2 AS x, o.qty % 3 AS m, "
       "1 AS lvl FROM $.orders o JOIN $.items i ON o.item_id = i.id WHERE (i.price * o.qty > 9 "
       "OR o.qty = 1) AND o.id <> 1 ORDER BY gross DESC",
       "", "2|15|-5|2|1; 4|5|-2|1|1");

  vexel::QueryBuilder fruit(db_), top(db_), ordered(db_);
  fruit.SELECT({price}).FROM(i).WHERE(i.col("category") == "fruit");
  top.SELECT({vexel::MAX(price)}).FROM(i);
  ordered.SELECT({o.col("item_id")}).FROM(o);
  vexel::QueryBuilder all(db_);
  all.SELECT({i.col("name"), (price * 100 / calc(top)).AS("pct")}).FROM(i);
  all.WHERE(price > vexel::ALL_OF(fruit)).OR(i.col("id") != vexel::ALL_OF(ordered));
  all.ORDER_BY({i.col("id")});
  const std::string pct =
      "SELECT name, price * 100 / (SELECT MAX(price) FROM $.items) AS pct FROM $.items ";
  Same(all,
       pct +
           "WHERE price > (SELECT MAX(price) FROM $.items WHERE category = 'fruit') OR id NOT IN "
           "(SELECT item_id FROM $.orders) ORDER BY id",
       pct +
           "WHERE price > ALL (SELECT price FROM $.items WHERE category = 'fruit') OR id <> ALL "
           "(SELECT item_id FROM $.orders) ORDER BY id",
       "banana|33; donut|83; eclair|100");
  vexel::QueryBuilder any(db_);
  any.SELECT({i.col("name")}).FROM(i).WHERE(price == vexel::ANY_OF(fruit)).ORDER_BY({i.col("id")});
  Same(any,
       "SELECT name FROM $.items WHERE price IN (SELECT price FROM $.items WHERE category = "
       "'fruit') ORDER BY id",
       "", "apple; banana");

  vexel::UpdateBuilder up(db_);
  up.UPDATE(i).SET(col("price"), calc(col("price")) * 2 + 1).WHERE(i.col("id") == 1);
  up.RETURNING({col("price")});
  EXPECT_EQ(Run(up), R("7")) << up.tosql();
}

TEST_P(ComputedTest, DatesAndStrings) {
  Exec(
      "CREATE TABLE $.events (id INTEGER PRIMARY KEY, day DATE, at TIMESTAMP, note TEXT); "
      "INSERT INTO $.events VALUES (1, '1994-12-31', '1994-12-31 23:59:30', ' Alpha '), "
      "(2, '1995-01-01', '1995-01-01 00:00:00', 'beta'), "
      "(3, '1995-02-28', '1995-02-28 12:30:45', NULL), (4, '1995-03-31', '1995-03-31 08:00:00', "
      "'Gamma')");
  const vexel::tab e = T("events");
  const col day = e.col("day"), at = e.col("at"), note = e.col("note");
  using vexel::DateField;
  const calc from = vexel::CAST(SafeValue::date(1995, 1, 1), vexel::CastType::Date);
  vexel::QueryBuilder q(db_);
  // PostgreSQL names computed columns by their function: each gets a name.
  q.SELECT({e.col("id"), vexel::DATE_FIELD(DateField::Year, day).AS("y"),
            vexel::DATE_FIELD(DateField::Month, at).AS("m"),
            vexel::DATE_FIELD(DateField::DayOfWeek, day).AS("w"),
            vexel::DATE_FIELD(DateField::Second, at).AS("s"),
            vexel::DATE_FIELD(DateField::Epoch, at).AS("e"),
            vexel::DATE_ADD(day, 1, vexel::MONTH).AS("d"),
            vexel::TIMESTAMP_ADD(at, 90, vexel::MINUTE).AS("t")});
  q.FROM(e).WHERE(day >= from).AND(day < vexel::DATE_ADD(from, 2, vexel::MONTH));
  q.ORDER_BY({e.col("id")});
  Same(q,
       "SELECT id, strftime('%Y', day) + 0, strftime('%m', at) + 0, strftime('%w', day) + 0, "
       "strftime('%S', at) + 0, strftime('%s', at) + 0, date(day, '+1 month'), datetime(at, "
       "'+90 minutes') FROM $.events WHERE day >= '1995-01-01' AND day < '1995-03-01' ORDER BY id",
       "SELECT id, date_part('year', day)::int AS y, date_part('month', at)::int AS m, "
       "date_part('dow', day)::int AS w, floor(date_part('second', at))::int AS s, "
       "floor(date_part('epoch', at))::bigint AS e, (day + interval '1 month')::date AS d, at + "
       "interval '90 minutes' AS t FROM $.events WHERE day >= "
       "'1995-01-01' AND day < '1995-03-01' ORDER BY id",
       "2|1995|1|0|0|788918400|1995-02-01|1995-01-01 01:30:00; "
       "3|1995|2|2|45|793974645|1995-03-28|1995-02-28 14:00:45");

  vexel::QueryBuilder s(db_);
  s.SELECT({e.col("id"),
            vexel::CONCAT({vexel::UPPER(vexel::TRIM(note)), SafeValue("-"),
                           vexel::CAST(e.col("id"), vexel::CastType::Text)})
                .AS("c"),
            vexel::SUBSTRING(note, 2, 3).AS("s"),
            vexel::LENGTH(vexel::COALESCE({note, SafeValue("")})).AS("n"),
            vexel::NULLIF(vexel::LOWER(vexel::TRIM(note)), SafeValue("beta")).AS("z"),
            vexel::SUBSTRING(vexel::TRIM(note), 4).AS("r")});
  s.FROM(e).WHERE(note.not_ilike("g%").AND(note.not_like("%x%")).OR(note.is_null()));
  s.ORDER_BY({e.col("id")});
  Same(
      s,
      "SELECT id, UPPER(TRIM(note)) || '-' || id, substr(note, 2, 3), length(ifnull(note, '')), "
      "nullif(lower(trim(note)), 'beta'), substr(trim(note), 4) FROM $.events WHERE (note NOT LIKE "
      "'g%' AND note NOT LIKE '%x%') OR note IS NULL ORDER BY id",
      "SELECT id, UPPER(TRIM(note)) || '-' || id AS c, substr(note, 2, 3) AS s, "
      "length(coalesce(note, '')) AS n, nullif(lower(trim(note)), 'beta') AS z, "
      "substr(trim(note), 4) AS r FROM $.events WHERE (note NOT ILIKE "
      "'g%' AND note NOT LIKE '%x%') OR note IS NULL ORDER BY id",
      "1|ALPHA-1|Alp|7|alpha|ha; 2|BETA-2|eta|4||a; 3|||0||");

  // Literals alone take the dialect they are given.
  const auto cast = [&](const char* v, vexel::CastType type) {
    return vexel::CAST(SafeValue(v), type).for_dialect(day.db_type());
  };
  vexel::QueryBuilder c(db_);
  c.SELECT({(cast("42", vexel::CastType::Integer) + 1).AS("i"),
            cast("9000000000", vexel::CastType::BigInt).AS("b"),
            (cast("7", vexel::CastType::Double) / 2).AS("d"),
            cast("1995-01-02 03:04:05", vexel::CastType::Timestamp).AS("t")});
  Same(c, "SELECT 43 AS i, 9000000000 AS b, 3.5 AS d, '1995-01-02 03:04:05' AS t", "",
       "43|9000000000|3.5|1995-01-02 03:04:05");
}

TEST_P(ComputedTest, AggregatesOverExpressions) {
  const vexel::tab i = T("items"), o = T("orders");
  const col price = i.col("price"), qty = o.col("qty");
  const tessel::DBTYPE dialect = lite() ? tessel::DB_SQLITE : tessel::DB_POSTGRESQL;
  vexel::QueryBuilder bakery(db_);
  bakery.SELECT({vexel::MAX(price)}).FROM(i).WHERE(i.col("category") == "bakery");
  const vexel::aggr_func gross = vexel::SUM(price * qty);
  vexel::CASE bulk;
  bulk.WHEN(qty >= SQLValue(5)).THEN(qty).ELSE(SQLValue(0));
  vexel::QueryBuilder q(db_);
  q.SELECT({i.col("category"), vexel::aggr_func(gross).AS("gross"),
            vexel::SUM(calc(bulk, dialect)).AS("bulk"),
            vexel::COUNT_DISTINCT(o.col("item_id")).AS("n")});
  q.FROM(o).JOIN(i).ON(o.col("item_id") == i.col("id")).GROUP_BY({i.col("category")});
  q.HAVING(gross > bakery).ORDER_BY({vexel::aggr_func(gross).DESC()});
  Same(q,
       "SELECT category, SUM(price * qty) AS g, SUM(CASE WHEN qty >= 5 THEN qty ELSE 0 END) AS b, "
       "COUNT(DISTINCT item_id) AS n FROM $.orders o JOIN $.items i ON o.item_id = i.id GROUP BY "
       "category HAVING SUM(price * qty) > (SELECT MAX(price) FROM $.items WHERE category = "
       "'bakery') ORDER BY g DESC",
       "", "fruit|45|15|1; vegetable|7|7|1");
}

VEXEL_ON_BOTH_ENGINES(ComputedTest);

}  // namespace
}  // namespace vexel_it
