// vexel_bench: the reference workload under Google Benchmark, or one case
// run a given number of times for an instruction count.
//
//   vexel_bench [--benchmark_* flags]       every case, Vexel and floor
//   vexel_bench --list                      case names and iteration hints
//   vexel_bench --case S1/pg/vexel --iterations N
//   vexel_bench --print S1/pg               the case's text (checked first)
//
// Before anything runs, every case is built once through Vexel and once by
// the floor and the texts must match byte for byte; a difference aborts
// the run, since a floor that writes other text measures nothing.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "alloc_count.h"
#include "tessel/DialectConnect.h"
#include "workload.h"

namespace {

using bench::Case;
using bench::Texts;

std::shared_ptr<tessel::CConnect> connection(tessel::DBTYPE db) {
  static std::map<int, std::shared_ptr<tessel::CConnect>> made;
  auto& conn = made[db];
  if (!conn) conn = std::make_shared<tessel::DialectConnect>(db);
  return conn;
}

struct Prepared {
  const Case* c;
  size_t reserve[2];
};

[[noreturn]] void mismatch(const Case& c, const char* which, const std::string& vexel,
                           const std::string& floor) {
  size_t at = 0;
  while (at < vexel.size() && at < floor.size() && vexel[at] == floor[at]) ++at;
  const size_t from = at > 60 ? at - 60 : 0;
  std::fprintf(stderr,
               "vexel_bench: %s: the floor's %s text differs from Vexel's at byte %zu "
               "(lengths %zu and %zu)\n  vexel: ...%.140s\n  floor: ...%.140s\n",
               c.name.c_str(), which, at, vexel.size(), floor.size(), vexel.c_str() + from,
               floor.c_str() + from);
  std::abort();
}

// Builds the case both ways, compares the texts and returns the sizes the
// floor reserves.
Prepared prepare(const Case& c) {
  const size_t none[2] = {0, 0};
  Texts v, f;
  c.vexel(bench::model(), connection(c.db), v);
  c.floor(bench::model(), c.db, none, f);
  if (v.first != f.first) mismatch(c, "first", v.first, f.first);
  if (v.second != f.second) mismatch(c, "second", v.second, f.second);
  if (v.first.empty()) {
    std::fprintf(stderr, "vexel_bench: %s renders no text\n", c.name.c_str());
    std::abort();
  }
  return {&c, {f.first.size(), f.second.size()}};
}

// The timed loop of one case, with the heap allocations and bytes it made
// per statement as counters.
template <typename Body>
void timed_loop(benchmark::State& state, Texts& out, Body body) {
  const bench::AllocTotals before = bench::alloc_totals();
  for (auto _ : state) {
    body();
    benchmark::DoNotOptimize(out.first.data());
    benchmark::ClobberMemory();
  }
  const bench::AllocTotals after = bench::alloc_totals();
  state.counters["allocs"] = benchmark::Counter(static_cast<double>(after.count - before.count),
                                                benchmark::Counter::kAvgIterations);
  state.counters["bytes"] = benchmark::Counter(static_cast<double>(after.bytes - before.bytes),
                                               benchmark::Counter::kAvgIterations);
}

void run_vexel(benchmark::State& state, Prepared p) {
  const auto conn = connection(p.c->db);
  const bench::Model& m = bench::model();
  Texts out;
  timed_loop(state, out, [&] { p.c->vexel(m, conn, out); });
}

void run_floor(benchmark::State& state, Prepared p) {
  const bench::Model& m = bench::model();
  Texts out;
  timed_loop(state, out, [&] { p.c->floor(m, p.c->db, p.reserve, out); });
}

// One case, `iterations` times, outside Google Benchmark: what an
// instruction counter runs twice with different counts and subtracts.
int run_one(const std::string& name, long iterations) {
  const std::string vexel_suffix = "/vexel", floor_suffix = "/floor";
  auto ends_with = [&](const std::string& s) {
    return name.size() > s.size() && name.compare(name.size() - s.size(), s.size(), s) == 0;
  };
  const bool floor = ends_with(floor_suffix);
  if (!floor && !ends_with(vexel_suffix)) {
    std::fprintf(stderr, "vexel_bench: --case wants NAME/vexel or NAME/floor, got %s\n",
                 name.c_str());
    return 2;
  }
  const std::string base = name.substr(0, name.size() - vexel_suffix.size());
  for (const Case& c : bench::cases()) {
    if (c.name != base) continue;
    const Prepared p = prepare(c);
    const auto conn = connection(c.db);
    const bench::Model& m = bench::model();
    Texts out;
    const bench::AllocTotals before = bench::alloc_totals();
    for (long k = 0; k < iterations; ++k) {
      if (floor) {
        c.floor(m, c.db, p.reserve, out);
      } else {
        c.vexel(m, conn, out);
      }
      benchmark::DoNotOptimize(out.first.data());
      benchmark::ClobberMemory();
    }
    const bench::AllocTotals after = bench::alloc_totals();
    if (iterations > 0) {
      std::printf("%s iterations=%ld allocs=%.1f bytes=%.1f\n", name.c_str(), iterations,
                  double(after.count - before.count) / iterations,
                  double(after.bytes - before.bytes) / iterations);
    }
    return 0;
  }
  std::fprintf(stderr, "vexel_bench: no case %s (see --list)\n", base.c_str());
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  std::string one_case;
  long iterations = -1;
  for (int k = 1; k < argc; ++k) {
    if (std::strcmp(argv[k], "--list") == 0) {
      for (const Case& c : bench::cases()) {
        std::printf("%s %s %d\n", c.name.c_str(), c.group.c_str(), c.count_iterations);
      }
      return 0;
    }
    if (std::strcmp(argv[k], "--print") == 0 && k + 1 < argc) {
      for (const Case& c : bench::cases()) {
        if (c.name != argv[k + 1]) continue;
        prepare(c);
        Texts t;
        c.vexel(bench::model(), connection(c.db), t);
        std::printf("%s\n%s%s", t.first.c_str(), t.second.c_str(), t.second.empty() ? "" : "\n");
        return 0;
      }
      std::fprintf(stderr, "vexel_bench: no case %s (see --list)\n", argv[k + 1]);
      return 2;
    }
    if (std::strcmp(argv[k], "--case") == 0 && k + 1 < argc) one_case = argv[++k];
    if (std::strcmp(argv[k], "--iterations") == 0 && k + 1 < argc) {
      iterations = std::strtol(argv[++k], nullptr, 10);
    }
  }
  if (!one_case.empty()) {
    if (iterations < 0) {
      std::fprintf(stderr, "vexel_bench: --case needs --iterations N\n");
      return 2;
    }
    return run_one(one_case, iterations);
  }

  std::vector<Prepared> prepared;
  for (const Case& c : bench::cases()) prepared.push_back(prepare(c));
  for (const Prepared& p : prepared) {
    benchmark::RegisterBenchmark((p.c->name + "/vexel").c_str(), run_vexel, p);
    benchmark::RegisterBenchmark((p.c->name + "/floor").c_str(), run_floor, p);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
