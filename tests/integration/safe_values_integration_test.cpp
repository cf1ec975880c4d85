// Hostile values through safe values into INSERT and SELECT on both engines:
// every accepted value reads back byte-identical, every refused one runs
// nothing, and no payload's second statement runs.
#include <cfloat>
#include <cstdint>
#include <cstring>
#include <limits>

#include "Engines.h"

namespace vexel_it {
namespace {

using vexel::col;
using vexel::SafeValue;

class SafeValueTest : public EngineTest {
 protected:
  // A builder's connection in the engine's dialect, tables of the test schema.
  vexel::tab table(const std::string& name) const {
    vexel::tab t = vexel::sch(s_).tab(name);
    t.set_db_type(db_->GetDBType());
    return t;
  }
};

TEST_P(SafeValueTest, HostileTextsRoundTripAndNeverRun) {
  Exec(
      "CREATE TABLE $.notes (id INTEGER, body TEXT); CREATE TABLE $.canary (v INTEGER);"
      "INSERT INTO $.canary VALUES (1)");
  const std::string canary = s_ + ".canary";
  const std::string accepted[] = {
      "O'Brien's",
      "'",
      "''",
      "'''",
      "\\",
      "\\'",
      "'\\",
      "a\\\nb",
      "\n",
      "\r\n",
      "\t",
      "",
      "'; DELETE FROM " + canary + "; --",
      "x'); DELETE FROM " + canary + "; --",
      "'; DROP TABLE " + canary + "; --",
      "' OR '1'='1",
      "1 OR 1=1",
      "admin'--",
      "/*",
      "*/",
      "-- dash",
      "#",
      ";",
      "%",
      "_",
      "%_%",
      "\"quoted\"",
      "`tick`",
      "[bracket]",
      "]",
      "$$",
      "$tag$ x $tag$",
      "E'\\x41'",
      "\\x00",
      "%00",
      "NULL",
      "\x01\x1f\x7f",
      "\xe2\x80\x99; DELETE FROM " + canary + " --",
      "\xca\xbc",
      "\xef\xbc\x87 OR 1=1",
      "\xc3\xa9t\xc3\xa9",
      "\xe6\x97\xa5\xe6\x9c\xac",
      "\xf0\x9f\x98\x80",
      "\xe2\x80\x8b",
      "\xef\xbb\xbf",
      std::string(100000, 'x') + "'",
  };
  int id = 0;
  for (const std::string& text : accepted) {
    ++id;
    vexel::InsertBuilder ins(db_);
    ins.INSERT_INTO(table("notes")).COLUMNS({col("id"), col("body")});
    ASSERT_TRUE(ins.VALUES({SafeValue(id), SafeValue(text)}).Execute()) << ErrorOf(*db_);
    vexel::QueryBuilder q(db_);
    const vexel::tab notes = table("notes");
    q.SELECT({notes.col("id"), notes.col("body")})
        .FROM(notes)
        .WHERE(notes.col("body") == SafeValue(text));
    EXPECT_EQ(Run(q), (Rows{{std::to_string(id), text}})) << text.substr(0, 40);
    // The same through bound parameters, as row -id.
    vexel::Params p(db_->GetDBType());
    vexel::InsertBuilder bound(db_);
    bound.INSERT_INTO(notes).COLUMNS({col("id"), col("body")}).VALUES({p(-id), p(text)});
    db_->BindNext(p.values());
    ASSERT_TRUE(bound.Execute()) << ErrorOf(*db_);
    vexel::Params w(db_->GetDBType());
    vexel::QueryBuilder bq(db_);
    bq.SELECT({notes.col("body")}).FROM(notes).WHERE(notes.col("id") == w(-id));
    db_->BindNext(w.values());
    EXPECT_EQ(Run(bq), (Rows{{text}})) << text.substr(0, 40);
  }
  const std::string refused[] = {std::string("a\0b", 3) + "; DELETE FROM " + canary, "\xff",
                                 "\xc0\xaf", "\xed\xa0\x80", "\xe2\x82"};
  for (const std::string& text : refused) {
    log_.clear();
    vexel::InsertBuilder ins(db_);
    ins.INSERT_INTO(table("notes")).COLUMNS({col("id"), col("body")});
    EXPECT_FALSE(ins.VALUES({SafeValue(0), SafeValue(text)}).Execute());
    EXPECT_EQ(log_.lines().size(), 1u);
  }
  EXPECT_EQ(Query("SELECT count(*) FROM $.notes"), R(std::to_string(2 * id)));
  EXPECT_EQ(Query("SELECT v FROM $.canary"), R("1"));
}

TEST_P(SafeValueTest, NumbersBooleansAndDatesAreExact) {
  // SQLite stores a REAL column's -0.0 as the integer 0: d has no type there.
  Exec(std::string("CREATE TABLE $.v (id INTEGER, d ") + (lite() ? "" : "DOUBLE PRECISION") +
       ", i BIGINT, b BOOLEAN, day DATE, note TEXT)");
  const double doubles[] = {1e-7, 0.1, 123456789.123456789, DBL_MAX, DBL_MIN, -0.0, 5e-324};
  const std::int64_t ints[] = {std::numeric_limits<std::int64_t>::min(),
                               std::numeric_limits<std::int64_t>::max()};
  const vexel::tab v = table("v");
  int id = 0;
  // Written as literals, then bound as parameters.
  for (const bool bound : {false, true}) {
    for (double d : doubles) {
      for (std::int64_t i : ints) {
        ++id;
        const SafeValue row[] = {id,
                                 d,
                                 i,
                                 id % 2 == 0,
                                 SafeValue::date(1995, 1, 1),
                                 id == 1 ? SafeValue(nullptr) : SafeValue("")};
        vexel::Params p(db_->GetDBType());
        std::vector<vexel::SQLValue> values;
        for (const SafeValue& x : row) values.push_back(bound ? p(x) : vexel::SQLValue(x));
        vexel::InsertBuilder ins(db_);
        ins.INSERT_INTO(v).COLUMNS(
            {col("id"), col("d"), col("i"), col("b"), col("day"), col("note")});
        db_->BindNext(p.values());
        ASSERT_TRUE(ins.VALUES(values).Execute()) << ins.tosql() << "\n" << ErrorOf(*db_);
        // Each row is found again by comparing every column with the value itself.
        vexel::QueryBuilder q(db_);
        q.SELECT({v.col("id")}).FROM(v).WHERE(v.col("d") == SafeValue(d));
        q.AND(v.col("i") == SafeValue(i)).AND(v.col("b") == SafeValue(id % 2 == 0));
        q.AND(v.col("day") == SafeValue::date(1995, 1, 1)).AND(v.col("id") == SafeValue(id));
        EXPECT_EQ(Run(q), R(std::to_string(id))) << q.tosql();
        // And read back typed, bit for bit.
        ASSERT_TRUE(db_->ExecuteQuery(In("SELECT d, i FROM $.v WHERE id = " + std::to_string(id))));
        double got_d = 1;
        std::int64_t got_i = 0;
        EXPECT_EQ(db_->GetDouble(0, got_d), tessel::FieldRead::kValue);
        EXPECT_EQ(db_->GetInt64(1, got_i), tessel::FieldRead::kValue);
        EXPECT_EQ(std::memcmp(&got_d, &d, sizeof d), 0) << d << " read " << got_d;
        EXPECT_EQ(got_i, i);
      }
    }
  }
  EXPECT_EQ(Query("SELECT count(*) FROM $.v WHERE note IS NULL"), R("1"));
  EXPECT_EQ(Query("SELECT count(*) FROM $.v WHERE note = ''"), R(std::to_string(id - 1)));
}

TEST_P(SafeValueTest, QuotedNamesHoldAnything) {
  const std::string name = "Order \"Items\"; DROP TABLE x";
  const std::string quoted = vexel::quote_name(name, db_->GetDBType());
  Exec("CREATE TABLE $." + quoted + " (" + vexel::quote_name("order", db_->GetDBType()) +
       " INTEGER)");
  vexel::InsertBuilder ins(db_);
  ins.INSERT_INTO(table(quoted)).COLUMNS({col(vexel::quote_name("order", db_->GetDBType()))});
  ASSERT_TRUE(ins.VALUES({SafeValue(7)}).Execute()) << ins.tosql() << "\n" << ErrorOf(*db_);
  EXPECT_EQ(Query("SELECT * FROM $." + quoted), R("7"));
}

VEXEL_ON_BOTH_ENGINES(SafeValueTest);

}  // namespace
}  // namespace vexel_it
