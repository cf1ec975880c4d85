// Harness of the integration tests: each parameterised test runs on SQLite
// (in memory) and on PostgreSQL (the throwaway server of the CTest fixture,
// found through VEXEL_PG_CONNINFO or the file VEXEL_PG_CONNINFO_FILE names).
// Every test gets a fresh schema holding the same data on both engines; on
// SQLite it is an attached in-memory database, so "schema.table" works too.
#ifndef VEXEL_TESTS_ENGINES_H
#define VEXEL_TESTS_ENGINES_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/CaptureLog.h"
#include "tessel/PGConnect.h"
#include "tessel/SQLiteConnect.h"
#include "vexel/vexel.h"

namespace vexel_it {

enum class Engine { kSqlite, kPostgres };
using Row = std::vector<std::string>;
using Rows = std::vector<Row>;

// Rows written as text: rows end at ';' (a blank may follow), fields at `field`.
Rows R(const std::string& text, char field = '|');
// What a test reads for a statement that failed.
const Rows kFails = R("<failed>");
// Every row of the last result, every column in result order; NULL reads "".
Rows ReadAll(tessel::RowsConnect& c);
Rows Sorted(Rows rows);
// "code|text" of the connection's last error.
std::string ErrorOf(tessel::CConnect& c);
std::string PgConnInfo();

// The data, the same on both engines:
//   items(id, name, category, price)   orders(id, item_id, qty)
//   1 apple   fruit      3             1 1 10
//   2 banana  fruit      2             2 1  5
//   3 carrot  vegetable  1             3 3  7
//   4 donut   bakery     5             4 4  1
//   5 eclair  bakery     6             5 9  2   (item 9 does not exist)
// a view in schema "public" of the items with price >= 3, and one row of
// typed values, extra(b BIT(4) '1100', tags INTEGER[] {3,1,2}, doc JSON).
class EngineTest : public testing::TestWithParam<Engine> {
 protected:
  void SetUp() override;
  void TearDown() override;
  bool lite() const { return GetParam() == Engine::kSqlite; }
  // Setup text and queries of a test, with "$." standing for its schema;
  // they fail the test with the engine's error.
  std::string In(std::string sql) const;
  void Exec(const std::string& sql) {
    ASSERT_TRUE(db_->ExecuteUpdate(In(sql))) << In(sql) << "\n" << ErrorOf(*db_);
  }
  Rows Query(const std::string& sql) {
    EXPECT_TRUE(db_->ExecuteQuery(In(sql))) << In(sql) << "\n" << ErrorOf(*db_);
    return ReadAll(*db_);
  }
  // Deletes the rows of both tables and loads the data again.
  void Reload();
  template <typename Builder>
  Rows Run(Builder& b) {
    return b.Execute() ? ReadAll(*db_) : kFails;
  }

  std::shared_ptr<tessel::RowsConnect> db_;
  std::shared_ptr<tessel::PGConnect> pg_;  // set on PostgreSQL
  std::string s_;                          // the test's schema
  vexel::tab items_, orders_, extra_;
  vexel::view view_;
  vexel_test::CaptureLog log_;  // failures a case expects stay off stderr
};

// An in-memory SQLite database whose catalogue queries read the type word as
// SQLite writes it ('table', not 'tab'), so that the catalogue's SQLite paths
// run to the end on the real engine.
struct TableWordConnect : tessel::SQLiteConnect {
  TableWordConnect() : SQLiteConnect(":memory:") {}
  bool ExecuteQuery(const std::string& sql) override;
};

// Tests of the PostgreSQL connection alone; skipped without a server.
class PostgresTest : public testing::Test {
 protected:
  void SetUp() override {
    if ((conninfo_ = PgConnInfo()).empty()) GTEST_SKIP() << "no PostgreSQL server";
  }
  std::string conninfo_;
};

}  // namespace vexel_it

// CTest gives the PostgreSQL fixture to the tests whose name says "postgres".
#define VEXEL_ON_BOTH_ENGINES(Suite)                                                           \
  INSTANTIATE_TEST_SUITE_P(                                                                    \
      Engines, Suite, testing::Values(vexel_it::Engine::kSqlite, vexel_it::Engine::kPostgres), \
      [](const auto& info) {                                                                   \
        return info.param == vexel_it::Engine::kSqlite ? "sqlite" : "postgres";                \
      })

#endif  // VEXEL_TESTS_ENGINES_H
