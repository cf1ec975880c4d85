// The shipped connections' cursors on both engines: a failure in the middle
// of a result, a cursor left early, the typed reads and the transaction
// guard.
#include <cfloat>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "Engines.h"
#include "tessel/Transaction.h"

namespace vexel_it {
namespace {

using tessel::FieldRead;
using testing::ElementsAre;
using testing::HasSubstr;

class CursorTest : public EngineTest {
 protected:
  // A result that fails in row `bad` of `rows`: SQLite divides by zero to
  // NULL, so its row fails by an integer overflow instead.
  bool Failing(int bad, int rows) {
    const std::string b = std::to_string(bad), n = std::to_string(rows);
    if (lite()) {
      return db_->ExecuteQuery(
          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
          "WHERE i < " +
          n + ") SELECT i, CASE WHEN i = " + b +
          " THEN abs(i - i - 9223372036854775807 - 1) ELSE i END AS v FROM n");
    }
    pg_->SetLoopBatchSize(1000);
    return db_->ExecuteLoop("SELECT i, (CASE WHEN i = " + b +
                            " THEN 'x' ELSE i::text END)::int AS v FROM generate_series(1, " + n +
                            ") AS i");
  }
};

uint64_t Bits(double d) {
  uint64_t bits = 0;
  std::memcpy(&bits, &d, sizeof bits);
  return bits;
}

TEST_P(CursorTest, FailureMidResultEndsTheCursorWithOneError) {
  // A time-out ends with its text: the statements after it run unlimited.
  if (lite()) {
    EXPECT_FALSE(db_->ExecuteQueryUDT(
        "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT count(*) FROM c",
        1));
  }
  // A cursor left early holds nothing that outlives it.
  ASSERT_TRUE(Failing(500000, 600000)) << ErrorOf(*db_);
  ASSERT_TRUE(db_->MoveNext() && db_->GetFieldInt("v") == 2);
  EXPECT_EQ(Query("SELECT 7 AS x"), R("7"));
  EXPECT_FALSE(db_->InTransaction());

  ASSERT_TRUE(Failing(500000, 600000)) << ErrorOf(*db_);
  int rows = 1;
  while (db_->MoveNext()) ++rows;
  // PostgreSQL loses the failing batch of 1,000 rows.
  EXPECT_EQ(rows, lite() ? 499999 : 499000);
  EXPECT_TRUE(db_->IsEOF() && !db_->MoveNext() && !db_->InTransaction());
  const std::string error = lite() ? "1|integer overflow"
                                   : std::to_string(tessel::PGConnect::ErrorCode("22P02")) +
                                         "|22P02: invalid input syntax for type integer: \"x\"";
  EXPECT_EQ(ErrorOf(*db_), error);
  std::string text;
  EXPECT_EQ(std::to_string(db_->GetLastQueryError(text)) + "|" + text, error);
  EXPECT_THAT(
      log_.texts(),
      ElementsAre(testing::StartsWith(std::string("5|[tessel::") + (lite() ? "SQLite" : "PG") +
                                      "Connect::MoveNext]the result ended early: ")));
  EXPECT_EQ(log_.lines()[0].module, "tessel");
}

TEST_P(CursorTest, TypedReadsTellNullFromEmptyAndKeepEveryBit) {
  // The engines parse the doubles' texts themselves: PostgreSQL from a
  // string, SQLite from a number, kept in a column without a type (a REAL
  // one stores -0.0 as the integer 0).
  std::string d = lite() ? "d" : "d DOUBLE PRECISION", sql = "INSERT INTO $.v VALUES ";
  const char* q = lite() ? "" : "'";
  const char* rows_in[] = {"1, -9223372036854775808, Q1e-7Q, '', TRUE",
                           "2, 9223372036854775807, Q1.7976931348623157e308Q, NULL, FALSE",
                           "3, NULL, Q-0.0Q, 'x', NULL",
                           "4, 42, Q2.2250738585072014e-308Q, '7', TRUE",
                           "5, 0, Q0.1Q, '', FALSE",
                           "6, 0, Q123456789.123456789Q, '', TRUE"};
  for (std::string row : rows_in) {
    for (size_t at = row.find('Q'); at != std::string::npos; at = row.find('Q'))
      row.replace(at, 1, q);
    sql += "(" + row + (row[0] == '6' ? ")" : "), ");
  }
  Exec("CREATE TABLE $.v (k INTEGER, i BIGINT, " + d + ", t TEXT, b BOOLEAN); " + sql);
  ASSERT_TRUE(db_->ExecuteQuery(In("SELECT k, i, d, t, b FROM $.v ORDER BY k")));
  EXPECT_EQ(db_->ColumnCount(), 5);
  EXPECT_EQ(db_->ColumnNames(), (Row{"k", "i", "d", "t", "b"}));
  EXPECT_EQ(db_->ColumnIndex("D"), 2);
  const FieldRead V = FieldRead::kValue, N = FieldRead::kNull;
  const struct {
    FieldRead ri;
    int64_t i;
    double d;
    FieldRead rt;
    FieldRead rb;
    bool b;
  } rows[] = {{V, INT64_MIN, 1e-7, V, V, true}, {V, INT64_MAX, DBL_MAX, N, V, false},
              {N, 0, -0.0, V, N, false},        {V, 42, DBL_MIN, V, V, true},
              {V, 0, 0.1, V, V, false},         {V, 0, 123456789.123456789, V, V, true}};
  for (const auto& want : rows) {
    SCOPED_TRACE(db_->GetFieldString("k"));
    int64_t i = 0;
    double d = 1;
    bool b = false;
    std::string t = "?";
    EXPECT_EQ(db_->GetInt64("i", i), want.ri);
    EXPECT_EQ(i, want.i);
    EXPECT_EQ(db_->GetDouble(2, d), V);
    EXPECT_EQ(Bits(d), Bits(want.d)) << d;
    EXPECT_EQ(db_->GetText("t", t), want.rt);
    EXPECT_EQ(db_->IsNull("t"), want.rt == N);
    EXPECT_EQ(db_->GetBool("b", b), want.rb);
    EXPECT_EQ(b, want.b);
    db_->MoveNext();
  }
  EXPECT_TRUE(db_->IsEOF());
  // Each failed read logs a line and leaves its reason as the last error.
  ASSERT_TRUE(db_->ExecuteQuery(In("SELECT t, k FROM $.v WHERE k = 3")));
  int64_t i = 0;
  bool b = false;
  const std::string lost =
      lite() ? "25|" : std::to_string(tessel::PGConnect::ErrorCode("42703")) + "|42703: ";
  const std::string typed =
      lite() ? "20|" : std::to_string(tessel::PGConnect::ErrorCode("22P02")) + "|22P02: ";
  EXPECT_EQ(db_->GetInt64("nope", i), FieldRead::kError);
  EXPECT_EQ(ErrorOf(*db_), lost + "the result has no column \"nope\"");
  EXPECT_EQ(db_->GetBool(0, b), FieldRead::kError);
  EXPECT_EQ(ErrorOf(*db_), typed + "column 0 (\"t\") holds \"x\", not a boolean");
  EXPECT_TRUE(db_->ColumnIndex("nope") < 0 && !db_->IsNull(9));
  db_->MoveNext();
  EXPECT_EQ(db_->GetInt64(1, i), FieldRead::kError);
  EXPECT_EQ(ErrorOf(*db_), lost + "the cursor is past the last row");
  EXPECT_EQ(log_.texts().size(), 5u);
  // SQLite keeps the rows of a text's last statement that returns columns.
  if (lite()) {
    ASSERT_TRUE(db_->ExecuteQuery("SELECT 1.5 AS a; CREATE TEMP TABLE z (x INTEGER)"));
    double d = 0;
    EXPECT_TRUE(db_->GetDouble("a", d) == V && d == 1.5 && db_->GetFieldString("a") == "1.5");
  }
}

TEST_P(CursorTest, GuardsUndoWorkOnThrowAndNestAsSavepoints) {
  auto insert = [&](int id) {
    Exec("INSERT INTO $.orders VALUES (" + std::to_string(id) + ", 1, 1)");
  };
  try {
    tessel::Transaction tx(*db_);
    insert(6);
    throw std::runtime_error("between two statements");
  } catch (const std::runtime_error&) {
  }
  {
    tessel::Transaction outer(*db_);
    insert(7);
    {
      tessel::Transaction inner(*db_);
      insert(8);
      EXPECT_FALSE(outer.Commit());  // an inner guard is open
    }
    tessel::Transaction kept(*db_);
    insert(9);
    EXPECT_TRUE(kept.Commit() && outer.Commit() && !outer.active());
  }
  EXPECT_FALSE(db_->InTransaction());
  EXPECT_EQ(Query("SELECT id FROM $.orders WHERE id > 5 ORDER BY id"), R("7; 9"));
  EXPECT_THAT(log_.texts(),
              ElementsAre(HasSubstr("Commit]a guard made after this one is still open")));
}

VEXEL_ON_BOTH_ENGINES(CursorTest);

}  // namespace
}  // namespace vexel_it
