#include "Engines.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vexel_it {
namespace {

std::string fresh_schema_name() {
  static int counter = 0;
  return "vx_" + std::to_string(static_cast<long>(getpid())) + "_" + std::to_string(++counter);
}

std::string read_file(const char* path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  std::string s = text.str();
  while (!s.empty() && (s.back() == '\n' || s.back() == ' ')) s.pop_back();
  return s;
}

}  // namespace

std::string PgConnInfo() {
  if (const char* direct = std::getenv("VEXEL_PG_CONNINFO")) return direct;
  if (const char* file = std::getenv("VEXEL_PG_CONNINFO_FILE")) return read_file(file);
  return std::string();
}

Rows ReadRows(tessel::CConnect& conn, const std::vector<std::string>& columns) {
  Rows rows;
  // Bounded, so that a cursor that never ends fails the test instead of
  // hanging it.
  for (int guard = 0; !conn.IsEOF() && guard < 100000; ++guard) {
    Row row;
    for (const std::string& c : columns) row.push_back(conn.GetFieldString(c));
    rows.push_back(row);
    conn.MoveNext();
  }
  return rows;
}

Rows Sorted(Rows rows) {
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::string EngineName(const testing::TestParamInfo<Engine>& info) {
  return info.param == Engine::kSqlite ? "sqlite" : "postgres";
}

void EngineTest::SetUp() {
  schema_ = fresh_schema_name();
  view_name_ = schema_ + "_cheap";
  if (is_sqlite()) {
    sqlite_ = std::make_shared<tessel::SQLiteConnect>(":memory:");
    ASSERT_TRUE(sqlite_->IsOpen());
    raw_ = sqlite_;
  } else {
    const std::string conninfo = PgConnInfo();
    if (conninfo.empty()) GTEST_SKIP() << "no PostgreSQL server (VEXEL_PG_CONNINFO unset)";
    pg_ = std::make_shared<tessel::PGConnect>(conninfo);
    raw_ = pg_;
    ASSERT_TRUE(pg_->IsOpen()) << LastError();
  }
  conn_ = std::make_shared<RecordingConnect>(raw_);

  const std::string s = schema_ + ".";
  // SQLite: the schema is an attached database; a view over it must be
  // TEMP, since views of the main database may not reach other databases.
  Exec(is_sqlite() ? "ATTACH DATABASE ':memory:' AS " + schema_ : "CREATE SCHEMA " + schema_);
  Exec("CREATE TABLE " + s +
       "items (id INTEGER PRIMARY KEY, name TEXT NOT NULL, category TEXT, price INTEGER)");
  Exec("CREATE TABLE " + s + "orders (id INTEGER PRIMARY KEY, item_id INTEGER, qty INTEGER)");
  Exec("INSERT INTO " + s +
       "items VALUES (1, 'apple', 'fruit', 3), (2, 'banana', 'fruit', 2), "
       "(3, 'carrot', 'vegetable', 1), (4, 'donut', 'bakery', 5), (5, 'eclair', 'bakery', 6)");
  Exec("INSERT INTO " + s + "orders VALUES (1, 1, 10), (2, 1, 5), (3, 3, 7), (4, 4, 1), (5, 9, 2)");
  Exec(std::string(is_sqlite() ? "CREATE TEMP VIEW " : "CREATE VIEW public.") + view_name_ +
       " AS SELECT id, name, price FROM " + s + "items WHERE price >= 3");
  ready_ = !HasFatalFailure();

  vexel::sch sch(schema_);
  items_ = sch.tab("items");
  orders_ = sch.tab("orders");
  cheap_view_ = vexel::sch("public").view(view_name_);
}

void EngineTest::TearDown() {
  if (pg_ && ready_) {
    // The view in "public" depends on the schema's table and goes with it.
    if (!pg_->IsOpen()) pg_->Reconnect();
    EXPECT_TRUE(pg_->ExecuteUpdate("DROP SCHEMA " + schema_ + " CASCADE")) << LastError();
  }
}

void EngineTest::Exec(const std::string& sql) {
  ASSERT_TRUE(raw_->ExecuteUpdate(sql)) << sql << "\n" << LastError();
}

Rows EngineTest::Query(const std::string& sql, const std::vector<std::string>& columns) {
  EXPECT_TRUE(raw_->ExecuteQuery(sql)) << sql << "\n" << LastError();
  return ReadRows(*raw_, columns);
}

std::string EngineTest::LastError() {
  std::string info;
  const int code = raw_->GetLastError(info);
  return std::to_string(code) + "|" + info;
}

Rows EngineTest::Run(vexel::QueryBuilder& q, const std::vector<std::string>& columns) {
  EXPECT_TRUE(q.Execute()) << q.tosql() << "\n" << LastError();
  return ReadRows(*conn_, columns);
}

}  // namespace vexel_it
