// Inserts, upserts, RETURNING rows and sequences on SQLite and PostgreSQL,
// each read back from the engine.
#include "Engines.h"

namespace vexel_it {
namespace {

using vexel::col;
using vexel::InsertBuilder;
using vexel::SeqenceBuilder;
using vexel::SQLValue;

class InsertSeqTest : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    // SQLite keeps an AUTOINCREMENT table's counter in its database's
    // sqlite_sequence; PostgreSQL names the serial's sequence tickets_id_seq.
    Exec("CREATE TABLE " + schema_ + ".tickets (id " +
         (is_sqlite() ? "INTEGER PRIMARY KEY AUTOINCREMENT" : "SERIAL PRIMARY KEY") +
         ", note TEXT)");
    tickets_ = vexel::sch(schema_).tab("tickets");
  }

  Rows Items(const std::string& where) {
    return Query(
        "SELECT id, name, price FROM " + schema_ + ".items WHERE " + where + " ORDER BY id",
        {"id", "name", "price"});
  }

  InsertBuilder ItemInsert() {
    InsertBuilder ins(conn_);
    ins.INSERT_INTO(items_).COLUMNS({col("id"), col("name"), col("price")});
    return ins;
  }

  vexel::tab tickets_;
};

TEST_P(InsertSeqTest, RowsAccumulate) {
  InsertBuilder ins = ItemInsert();
  ins.VALUES({6, "fig", 4}).VALUES({7, "grape", 8});
  ASSERT_TRUE(ins.Execute()) << ins.tosql() << "\n" << LastError();
  EXPECT_EQ(conn_->last_op(), "ExecuteUpdate");
  EXPECT_EQ(Items("id > 5"), (Rows{{"6", "fig", "4"}, {"7", "grape", "8"}}));
}

TEST_P(InsertSeqTest, ConflictWithoutSetKeepsTheRow) {
  InsertBuilder ins = ItemInsert();
  ins.VALUES({1, "apricot", 9}).ON_CONFLICT({col("id")}).DO_NOTHING();
  ASSERT_TRUE(ins.Execute()) << ins.tosql() << "\n" << LastError();
  EXPECT_EQ(Items("id = 1"), (Rows{{"1", "apple", "3"}}));
}

TEST_P(InsertSeqTest, UpsertTakesTheProposedRowWhereTheConditionHolds) {
  for (int id : {1, 4}) {  // apple costs 3, donut 5
    InsertBuilder ins = ItemInsert();
    ins.VALUES({id, "new", 30}).ON_CONFLICT({col("id")}).DO_UPDATE();
    ins.SET(col("price"), col("price").EXCLUDED()).SET(col("name"), col("name").EXCLUDED());
    // PostgreSQL needs the qualifier: "price" alone could be the proposed row.
    ins.WHERE(items_.col("price") < SQLValue(4));
    ASSERT_TRUE(ins.Execute()) << ins.tosql() << "\n" << LastError();
  }
  EXPECT_EQ(Items("id IN (1, 4)"), (Rows{{"1", "new", "30"}, {"4", "donut", "5"}}));
}

TEST_P(InsertSeqTest, ReturningRowsAreReadFromTheConnection) {
  InsertBuilder ins = ItemInsert();
  ins.VALUES({8, "kiwi", 2}).VALUES({9, "lime", 1}).RETURNING({col("id"), col("name")});
  ASSERT_TRUE(ins.Execute()) << ins.tosql() << "\n" << LastError();
  EXPECT_EQ(conn_->last_op(), "ExecuteReturning");
  EXPECT_EQ(Sorted(ReadRows(*conn_, {"id", "name"})), (Rows{{"8", "kiwi"}, {"9", "lime"}}));
  // An upsert returns the row as it now stands.
  InsertBuilder up = ItemInsert();
  up.VALUES({8, "kiwi", 7}).ON_CONFLICT({col("id")}).SET(col("price"), SQLValue(7));
  up.RETURNING({col("price")});
  ASSERT_TRUE(up.Execute()) << up.tosql() << "\n" << LastError();
  EXPECT_EQ(ReadRows(*conn_, {"price"}), (Rows{{"7"}}));
}

// On PostgreSQL the sequence read follows the insert; SQLite ignores it.
TEST_P(InsertSeqTest, InsertThenReadTheSequence) {
  InsertBuilder ins(conn_);
  ins.INSERT_INTO(tickets_).COLUMNS({col("note")}).VALUES({"a"}).VALUES({"b"});
  ins.EXCLUDE(vexel::CURRVAL(vexel::seq(schema_ + ".tickets_id_seq"), tickets_));
  ASSERT_TRUE(ins.Execute()) << ins.tosql() << "\n" << LastError();
  if (is_sqlite()) {
    EXPECT_EQ(conn_->last_op(), "ExecuteUpdate");
    EXPECT_EQ(
        Query("SELECT seq FROM " + schema_ + ".sqlite_sequence WHERE name = 'tickets'", {"seq"}),
        (Rows{{"2"}}));
  } else {
    EXPECT_EQ(conn_->last_op(), "ExecuteQuery");
    EXPECT_EQ(ReadRows(*conn_, {"last_value"}), (Rows{{"2"}}));
  }
}

TEST_P(InsertSeqTest, SequenceSetNextAndAggregate) {
  Exec("INSERT INTO " + schema_ + ".tickets (note) VALUES ('a'), ('b'), ('c')");
  const vexel::seq s("tickets_id_seq");

  SeqenceBuilder set(conn_);
  set.SET_VAL(s, 40, tickets_);
  ASSERT_TRUE(set.Execute()) << set.tosql_set() << "\n" << LastError();
  EXPECT_EQ(ReadRows(*conn_, {is_sqlite() ? "seq" : "setval"}), (Rows{{"40"}}));

  SeqenceBuilder next(conn_);
  next.NEXT_VAL(s, tickets_);
  ASSERT_TRUE(next.Execute()) << next.tosql_next() << "\n" << LastError();
  // SQLite reads the counter as it stands; PostgreSQL advances it.
  EXPECT_EQ(ReadRows(*conn_, {"seq"}), (Rows{{is_sqlite() ? "40" : "41"}}));
  EXPECT_EQ(conn_->last_op(), is_sqlite() ? "SeqenceExecute" : "ExecuteQuery");

  SeqenceBuilder back(conn_);
  back.SET_VAL(s, vexel::MAX(col("id")), tickets_);
  ASSERT_TRUE(back.Execute()) << back.tosql_set() << "\n" << LastError();
  EXPECT_EQ(ReadRows(*conn_, {is_sqlite() ? "seq" : "setval"}), (Rows{{"3"}}));

  // The next insert continues after the maximum on both engines.
  Exec("INSERT INTO " + schema_ + ".tickets (note) VALUES ('d')");
  EXPECT_EQ(Query("SELECT id FROM " + schema_ + ".tickets WHERE note = 'd'", {"id"}),
            (Rows{{"4"}}));
}

TEST_P(InsertSeqTest, ManualNextReadsTheColumnMaximumOnSqlite) {
  Exec("INSERT INTO " + schema_ + ".tickets (id, note) VALUES (7, 'a')");
  SeqenceBuilder next(conn_);
  next.MANUAL_NEXT_VAL(vexel::seq("tickets_id_seq"), tickets_, col("id"));
  ASSERT_TRUE(next.Execute()) << next.tosql_next() << "\n" << LastError();
  if (is_sqlite()) {
    EXPECT_EQ(conn_->last_op(), "SeqenceExecuteManual");
    EXPECT_EQ(ReadRows(*conn_, {"max(id)"}), (Rows{{"7"}}));
  } else {
    // PostgreSQL has the real sequence, untouched by the explicit id.
    EXPECT_EQ(ReadRows(*conn_, {"seq"}), (Rows{{"1"}}));
  }
}

INSTANTIATE_TEST_SUITE_P(Engines, InsertSeqTest,
                         testing::Values(Engine::kSqlite, Engine::kPostgres), EngineName);

}  // namespace
}  // namespace vexel_it
