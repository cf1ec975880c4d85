// Heap traffic of the benchmark process. The binary replaces the global
// operator new, so every allocation made by the library, the standard
// containers it uses and the hand-written floor is counted here.
#ifndef VEXEL_BENCH_ALLOC_COUNT_H
#define VEXEL_BENCH_ALLOC_COUNT_H

#include <cstddef>

namespace bench {

struct AllocTotals {
  size_t count = 0;  // calls of operator new (all forms)
  size_t bytes = 0;  // bytes requested by them
};

// Totals since the start of the process.
AllocTotals alloc_totals();

}  // namespace bench

#endif  // VEXEL_BENCH_ALLOC_COUNT_H
