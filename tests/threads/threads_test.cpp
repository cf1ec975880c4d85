// Four threads build and run statements on their own builders and their own
// in-memory databases, sharing the reference objects and one condition built
// beforehand, while a fifth keeps replacing the log sink. Run under
// ThreadSanitizer (the `tsan` preset) this shows that rendering shared
// objects writes nothing shared and that the sink may change while others
// log; the counts show that no line is lost or doubled meanwhile.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "olk/LogSink.h"
#include "tessel/SQLiteConnect.h"
#include "vexel/vexel.h"

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 40;

TEST(Threads, OwnBuildersAndConnectionsShareReferencesWhileTheSinkChanges) {
  vexel::sch shop("main");
  shop.set_db_type(tessel::DB_SQLITE);
  const vexel::tab items = shop.tab("items");
  const vexel::col id("id");
  const vexel::col qty("qty");
  const vexel::Ptr_CommonExpr wanted = (qty < vexel::SQLValue(1000)).AND(id > vexel::SQLValue(0));

  std::atomic<long> lines{0};
  std::atomic<bool> done{false};
  const Olk::Log::Sink counting = [&lines](int, const std::string&, const std::string&) {
    ++lines;
  };
  const Olk::Log::Sink previous = Olk::Log::SetSink(counting);
  std::thread replacer([&] {
    // Bounded even if a worker hangs.
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!done && std::chrono::steady_clock::now() < until) Olk::Log::SetSink(counting);
  });

  std::vector<int> rows(kThreads, -1);
  std::vector<std::thread> workers;
  for (int w = 0; w < kThreads; ++w) {
    workers.emplace_back([&, w] {
      auto conn = std::make_shared<tessel::SQLiteConnect>(":memory:");
      if (!conn->ExecuteUpdate("CREATE TABLE items(id INTEGER PRIMARY KEY, qty INTEGER);")) return;
      for (int r = 1; r <= kRounds; ++r) {
        vexel::InsertBuilder ins(conn);
        ins.INSERT_INTO(items).COLUMNS({id, qty}).VALUES({r, 5000}).Execute();
        vexel::UpdateBuilder up(conn);
        up.UPDATE(items).SET(qty, vexel::SQLValue(r)).WHERE(id == r).Execute();
        // Fails on purpose: one error line each.
        vexel::QueryBuilder missing(conn);
        missing.SELECT({id}).FROM(shop.tab("missing")).Execute();
      }
      vexel::DeleteBuilder del(conn);
      del.DELETE_FROM(items).WHERE(id > vexel::SQLValue(kRounds / 2)).Execute();
      vexel::QueryBuilder q(conn);
      if (!q.SELECT({id}).FROM(items).WHERE(wanted).Execute()) return;
      for (rows[w] = 0; !conn->IsEOF(); conn->MoveNext()) ++rows[w];
    });
  }
  for (std::thread& t : workers) t.join();
  done = true;
  replacer.join();
  Olk::Log::SetSink(previous);

  for (int w = 0; w < kThreads; ++w) EXPECT_EQ(rows[w], kRounds / 2) << "thread " << w;
  EXPECT_EQ(lines.load(), kThreads * kRounds);
}

}  // namespace
