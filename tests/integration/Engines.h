// Shared harness of the integration tests: each test runs on SQLite (an
// in-memory database) and on PostgreSQL (the throwaway server the CTest
// fixture starts; its connection string comes from VEXEL_PG_CONNINFO or the
// file named by VEXEL_PG_CONNINFO_FILE). Every test gets a fresh schema
// with the same small data set on both engines; on SQLite the schema is an
// attached in-memory database of that name, so "schema.table" works there
// too.
#ifndef VEXEL_TESTS_ENGINES_H
#define VEXEL_TESTS_ENGINES_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "RecordingConnect.h"
#include "tessel/CConnect.h"
#include "tessel/PGConnect.h"
#include "tessel/SQLiteConnect.h"
#include "vexel/vexel.h"

namespace vexel_it {

enum class Engine { kSqlite, kPostgres };

using Row = std::vector<std::string>;
using Rows = std::vector<Row>;

// The PostgreSQL connection string for this run, "" when none was given.
std::string PgConnInfo();

// Every row of the connection's last result, read through its cursor: for
// each row, the named columns' texts in the given order.
Rows ReadRows(tessel::CConnect& conn, const std::vector<std::string>& columns);

// The same rows, sorted: for set operations, whose row order is unspecified.
Rows Sorted(Rows rows);

// "sqlite" / "postgres", the parameter suffix of the test names. CTest picks
// the tests that need the PostgreSQL fixture by the "postgres" in the name.
std::string EngineName(const testing::TestParamInfo<Engine>& info);

// The data set:
//   items(id, name, category, price)   orders(id, item_id, qty)
//   1 apple   fruit      3             1 1 10
//   2 banana  fruit      2             2 1  5
//   3 carrot  vegetable  1             3 3  7
//   4 donut   bakery     5             4 4  1
//   5 eclair  bakery     6             5 9  2   (item 9 does not exist)
// and a view in schema "public" over the items with price >= 3.
class EngineTest : public testing::TestWithParam<Engine> {
 protected:
  void SetUp() override;
  void TearDown() override;

  bool is_sqlite() const { return GetParam() == Engine::kSqlite; }
  // Runs setup text through ExecuteUpdate; fails the test with the error.
  void Exec(const std::string& sql);
  // Runs a query through ExecuteQuery and reads the named columns.
  Rows Query(const std::string& sql, const std::vector<std::string>& columns);
  // The connection's last error, "code|text".
  std::string LastError();
  // Execute()s `q` through the recording connection, expecting success, and
  // reads the named columns.
  Rows Run(vexel::QueryBuilder& q, const std::vector<std::string>& columns);

  std::shared_ptr<tessel::CConnect> raw_;          // the engine's connection
  std::shared_ptr<RecordingConnect> conn_;         // raw_, recording the routes
  std::shared_ptr<tessel::SQLiteConnect> sqlite_;  // set on SQLite
  std::shared_ptr<tessel::PGConnect> pg_;          // set on PostgreSQL
  std::string schema_;                             // fresh per test
  std::string view_name_;                          // the view in "public"
  vexel::tab items_;
  vexel::tab orders_;
  vexel::view cheap_view_;

 private:
  bool ready_ = false;
};

}  // namespace vexel_it

#endif  // VEXEL_TESTS_ENGINES_H
