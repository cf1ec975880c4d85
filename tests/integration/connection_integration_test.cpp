// The connections' own operations that the SELECT tests do not reach:
// returning rows from data changes, several statements in one text, and the
// sequence statements.
#include "Engines.h"

namespace vexel_it {
namespace {

class ConnectionTest : public EngineTest {};

TEST_P(ConnectionTest, ReturningKeepsRows) {
  ASSERT_TRUE(raw_->ExecuteReturning("INSERT INTO " + schema_ +
                                     ".orders VALUES (6, 2, 3), (7, 5, 4) RETURNING id, qty"))
      << LastError();
  EXPECT_EQ(ReadRows(*raw_, {"id", "qty"}), (Rows{{"6", "3"}, {"7", "4"}}));
  ASSERT_TRUE(
      raw_->ExecuteReturning("DELETE FROM " + schema_ + ".orders WHERE id > 5 RETURNING id"))
      << LastError();
  EXPECT_EQ(Sorted(ReadRows(*raw_, {"id"})), (Rows{{"6"}, {"7"}}));
}

TEST_P(ConnectionTest, SeveralStatementsKeepTheLastRows) {
  ASSERT_TRUE(raw_->ExecuteUpdate("UPDATE " + schema_ + ".items SET price = price + 1; SELECT " +
                                  "sum(price) AS total FROM " + schema_ + ".items; "))
      << LastError();
  EXPECT_EQ(raw_->GetFieldInt("total"), 22);
  // A statement without rows leaves an empty result.
  ASSERT_TRUE(raw_->ExecuteUpdate("UPDATE " + schema_ + ".items SET price = price - 1"));
  EXPECT_TRUE(raw_->IsEOF());
  EXPECT_EQ(raw_->GetFieldString("total"), "");
  // Moving past the end stays at the end.
  EXPECT_FALSE(raw_->MoveNext());
  EXPECT_TRUE(raw_->IsEOF());
}

TEST_P(ConnectionTest, SequenceStatementsLeaveTheValueInTheCursor) {
  if (is_sqlite()) {
    // The texts the SQLite sequence builder renders: the emulated sequence
    // of an AUTOINCREMENT table, and a column's maximum.
    Exec("CREATE TABLE counted (id INTEGER PRIMARY KEY AUTOINCREMENT, v TEXT)");
    Exec("INSERT INTO counted (v) VALUES ('a'), ('b'), ('c')");
    ASSERT_TRUE(raw_->SeqenceExecute("SELECT seq FROM sqlite_sequence WHERE name = 'counted';"))
        << LastError();
    EXPECT_EQ(raw_->GetFieldInt("seq"), 3);
  } else {
    Exec("CREATE SEQUENCE " + schema_ + ".counted_seq START 41");
    ASSERT_TRUE(raw_->SeqenceExecute("SELECT nextval('" + schema_ + ".counted_seq') AS seq;"))
        << LastError();
    EXPECT_EQ(raw_->GetFieldInt("seq"), 41);
  }
  ASSERT_TRUE(raw_->SeqenceExecuteManual("SELECT max(id) FROM " + schema_ + ".items;"))
      << LastError();
  EXPECT_EQ(raw_->GetFieldInt(0), 5);
}

INSTANTIATE_TEST_SUITE_P(Engines, ConnectionTest,
                         testing::Values(Engine::kSqlite, Engine::kPostgres), EngineName);

}  // namespace
}  // namespace vexel_it
