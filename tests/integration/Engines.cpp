#include "Engines.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>

namespace vexel_it {

Rows R(const std::string& text, char field) {
  Rows rows;
  for (size_t at = 0; at < text.size(); at += text.compare(at, 2, "; ") == 0 ? 2 : 1) {
    for (rows.emplace_back(1); at < text.size() && text[at] != ';'; ++at) {
      if (text[at] == field) rows.back().emplace_back();
      if (text[at] != field) rows.back().back() += text[at];
    }
  }
  return rows;
}

bool TableWordConnect::ExecuteQuery(const std::string& sql) {
  const size_t at = sql.find("type = 'tab'");
  return SQLiteConnect::ExecuteQuery(
      at == std::string::npos ? sql : std::string(sql).insert(at + 11, "le"));
}

Rows ReadAll(tessel::RowsConnect& c) {
  Rows rows;
  const std::vector<std::string>& names = c.ColumnNames();
  // Fields are read by name: a name twice would read its first column twice.
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
  // Bounded: a cursor that never ends fails the test instead of hanging it.
  for (int guard = 0; !c.IsEOF() && guard < 100000; ++guard, c.MoveNext()) {
    rows.emplace_back();
    for (const std::string& name : names) rows.back().push_back(c.GetFieldString(name));
  }
  return rows;
}

Rows Sorted(Rows rows) {
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::string ErrorOf(tessel::CConnect& c) {
  std::string info;
  const int code = c.GetLastError(info);
  return std::to_string(code) + "|" + info;
}

std::string PgConnInfo() {
  std::string line = std::getenv("VEXEL_PG_CONNINFO") ? std::getenv("VEXEL_PG_CONNINFO") : "";
  if (const char* file = std::getenv("VEXEL_PG_CONNINFO_FILE"))
    std::getline(std::ifstream(file), line);
  return line;
}

std::string EngineTest::In(std::string sql) const {
  for (size_t at = sql.find("$."); at != std::string::npos; at = sql.find("$.", at))
    sql.replace(at, 1, s_);
  return sql;
}

void EngineTest::SetUp() {
  static int counter = 0;
  s_ = "vx_" + std::to_string(getpid()) + "_" + std::to_string(++counter);
  if (lite()) {
    db_ = std::make_shared<tessel::SQLiteConnect>(":memory:");
  } else {
    if (PgConnInfo().empty()) GTEST_SKIP() << "no PostgreSQL server";
    db_ = pg_ = std::make_shared<tessel::PGConnect>(PgConnInfo());
    pg_->SetLoopBatchSize(2);  // five rows of a loop come in three batches
  }
  // A view over an attached database must be TEMP on SQLite.
  Exec((lite() ? "ATTACH DATABASE ':memory:' AS " : "CREATE SCHEMA ") + s_ +
       "; CREATE TABLE $.items (id INTEGER PRIMARY KEY, name TEXT NOT NULL, category TEXT, price "
       "INTEGER); CREATE TABLE $.orders (id INTEGER PRIMARY KEY, item_id INTEGER, qty INTEGER); " +
       (lite() ? "CREATE TEMP VIEW " : "CREATE VIEW public.") + s_ +
       "_cheap AS SELECT id, name, price FROM $.items WHERE price >= 3; " +
       (lite() ? "CREATE TABLE $.extra (b TEXT, tags TEXT, doc TEXT); INSERT INTO $.extra VALUES "
                 "('1100', '[3,1,2]', '{\"a\":{\"b\":1}}')"
               : "CREATE TABLE $.extra (b BIT(4), tags INTEGER[], doc JSONB); INSERT INTO $.extra "
                 "VALUES (B'1100', '{3,1,2}', '{\"a\":{\"b\":1}}')"));
  Reload();
  items_ = vexel::sch(s_).tab("items");
  orders_ = vexel::sch(s_).tab("orders");
  extra_ = vexel::sch(s_).tab("extra");
  view_ = vexel::sch("public").view(s_ + "_cheap");
}

void EngineTest::TearDown() {
  // The view in "public" depends on the schema's table and goes with it.
  if (pg_ && (pg_->IsOpen() || pg_->Reconnect()))
    pg_->ExecuteUpdate("DROP SCHEMA " + s_ + " CASCADE");
}

void EngineTest::Reload() {
  Exec(
      "DELETE FROM $.items; DELETE FROM $.orders; INSERT INTO $.items VALUES (1, 'apple', 'fruit', "
      "3), (2, 'banana', 'fruit', 2), (3, 'carrot', 'vegetable', 1), (4, 'donut', 'bakery', 5), "
      "(5, 'eclair', 'bakery', 6); INSERT INTO $.orders VALUES (1, 1, 10), (2, 1, 5), (3, 3, 7), "
      "(4, 4, 1), (5, 9, 2)");
}

}  // namespace vexel_it
