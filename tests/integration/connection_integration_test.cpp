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

TEST_P(ConnectionTest, ErrorInALaterStatementLeavesNoRows) {
  // SQLite runs the statements one by one; PostgreSQL runs one text as one
  // implicit transaction and undoes the first statement with the second.
  const std::string count = "SELECT count(*) AS n FROM " + schema_ + ".items";
  ASSERT_TRUE(raw_->ExecuteQuery(count));
  EXPECT_FALSE(raw_->ExecuteUpdate("INSERT INTO " + schema_ +
                                   ".items VALUES (6, 'fig', 'fruit', 4); " + count + "; SELEC 1"));
  EXPECT_TRUE(raw_->IsEOF());
  EXPECT_EQ(raw_->GetFieldString("n"), "");
  std::string info;
  EXPECT_EQ(raw_->GetLastError(info),
            is_sqlite() ? 1 /* SQLITE_ERROR */ : tessel::PGConnect::ErrorCode("42601"));
  EXPECT_EQ(Query(count, {"n"}), (Rows{{is_sqlite() ? "6" : "5"}}));
  // A later success keeps the last failure's text.
  EXPECT_NE(raw_->GetLastError(info), 0);
  EXPECT_NE(info.find("syntax error"), std::string::npos) << info;
}

TEST_P(ConnectionTest, NulByteInTextIsRefusedNotTruncated) {
  const std::string sql("SELECT 1 AS v\0; SELECT 2 AS v", 29);
  EXPECT_FALSE(raw_->ExecuteQuery(sql));
  EXPECT_FALSE(raw_->ExecuteQueryUDT(sql, 5));
  EXPECT_FALSE(raw_->ExecuteLoop(sql));
  EXPECT_TRUE(raw_->IsEOF());
  std::string info;
  EXPECT_EQ(raw_->GetLastError(info),
            is_sqlite() ? 1 /* SQLITE_ERROR */ : tessel::PGConnect::ErrorCode("22021"));
  EXPECT_NE(info.find("NUL byte at offset 13"), std::string::npos) << info;
  EXPECT_EQ(Query("SELECT 3 AS v", {"v"}), (Rows{{"3"}}));
}

TEST_P(ConnectionTest, IntFieldsTakeTheLeadingIntegerClampedToInt) {
  struct Case {
    const char* value;
    int expected;
  };
  const Case cases[] = {
      {"'2147483647'", 2147483647},
      {"'2147483648'", 2147483647},
      {"'-2147483649'", -2147483647 - 1},
      {"'99999999999999999999999'", 2147483647},
      {"'-99999999999999999999999'", -2147483647 - 1},
      {"'12abc'", 12},
      {"' 7'", 7},
      {"'abc'", 0},
      {"''", 0},
      {"NULL", 0},
      {"'-'", 0},
      {"'3.9'", 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.value);
    ASSERT_TRUE(raw_->ExecuteQuery(std::string("SELECT ") + c.value + " AS v")) << LastError();
    EXPECT_EQ(raw_->GetFieldInt("v"), c.expected);
    EXPECT_EQ(raw_->GetFieldInt(0), c.expected);
  }
}

INSTANTIATE_TEST_SUITE_P(Engines, ConnectionTest,
                         testing::Values(Engine::kSqlite, Engine::kPostgres), EngineName);

}  // namespace
}  // namespace vexel_it
