// Cost of building and rendering typical statements, per dialect.
#include <benchmark/benchmark.h>

#include <memory>

#include "vexel/vexel.h"

namespace {

// A connection that only names its dialect; executing always succeeds.
class DialectOnly : public tessel::CConnect {
 public:
  explicit DialectOnly(int db) : db_(db) {}
  bool ExecuteUpdate(const std::string&) override { return true; }
  bool ExecuteQuery(const std::string&) override { return true; }
  int GetLastError(std::string&) override { return 0; }
  bool MoveNext() override { return false; }
  bool IsEOF() override { return true; }
  std::string GetFieldString(const std::string&) override { return {}; }
  int GetFieldInt(int) override { return 0; }
  int GetFieldInt(const std::string&) override { return 0; }
  int GetLastQueryError(std::string&) override { return 0; }
  bool ExecuteQueryUDT(const std::string&, const int&) override { return true; }
  bool ExecuteSortByCollate(const std::string&, const std::string&) override { return true; }
  bool ExecuteLoop(const std::string&) override { return true; }
  tessel::DBTYPE GetDBType() override { return static_cast<tessel::DBTYPE>(db_); }
  bool ExecuteQueryContainView(const std::string&) override { return true; }
  bool ExecuteReturning(const std::string&) override { return true; }
  bool SeqenceExecute(const std::string&) override { return true; }
  bool SeqenceExecuteManual(const std::string&) override { return true; }

 private:
  int db_;
};

vexel::Ptr_CommonExpr cond(const char* text) {
  return vexel::Ptr_CommonExpr(std::make_shared<vexel::SQLExpr>(text));
}

// A join of three tables with a grouped aggregate, paging and a condition
// tree of five predicates: built, rendered and executed once per iteration.
void BM_BuildAndRenderSelect(benchmark::State& state) {
  auto conn = std::make_shared<DialectOnly>(static_cast<int>(state.range(0)));
  const vexel::sch s("shop");
  const vexel::tab o = s.tab("orders"), c = s.tab("customers"), i = s.tab("items");
  for (auto _ : state) {
    vexel::QueryBuilder q(conn);
    vexel::Ptr_CommonExpr where = cond("o.total > 10");
    where.AndCon(cond("o.state = 'paid'")).OrCon(cond("c.vip = 1"));
    q.SELECT({c.col("name"), o.col("total"), i.col("sku")})
        .FROM(o)
        .JOIN(c)
        .ON(cond("o.customer = c.id"))
        .LEFT_JOIN(i)
        .ON(cond("i.order_id = o.id"))
        .WHERE(where.AND(cond("o.day > '2026-01-01'")))
        .GROUP_BY({c.col("name"), o.col("total"), i.col("sku")})
        .ORDER_BY({o.col("total").DESC()})
        .LIMIT(50)
        .OFFSET(100);
    benchmark::DoNotOptimize(q.Execute());
  }
}
BENCHMARK(BM_BuildAndRenderSelect)->Arg(1)->Arg(2)->Arg(3);

// Rendering alone of a finished statement.
void BM_RenderOnly(benchmark::State& state) {
  auto conn = std::make_shared<DialectOnly>(static_cast<int>(state.range(0)));
  const vexel::tab t = vexel::sch("s").tab("t");
  vexel::QueryBuilder q(conn);
  std::vector<vexel::col> cols;
  for (int n = 0; n < 20; ++n) cols.push_back(t.col("c" + std::to_string(n)));
  q.SELECT(cols).FROM(t).WHERE(cond("c1 = 1")).ORDER_BY({t.col("c1")}).LIMIT(10);
  for (auto _ : state) benchmark::DoNotOptimize(q.tosql());
}
BENCHMARK(BM_RenderOnly)->Arg(1)->Arg(2)->Arg(3);

// A flat chain of n predicates rendered as one condition.
void BM_ConditionChain(benchmark::State& state) {
  vexel::Ptr_CommonExpr tree = cond("a = 0");
  for (int64_t n = 1; n < state.range(0); ++n) tree.AndCon(cond("a = 1"));
  for (auto _ : state) benchmark::DoNotOptimize(tree.GetExpr(tessel::DB_POSTGRESQL));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_ConditionChain)->Range(8, 4096)->Complexity();

}  // namespace
