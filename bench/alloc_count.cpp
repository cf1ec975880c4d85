// Counting replacements of the global allocation functions. The benchmarks
// run on one thread, so plain counters are enough and keep the cost of the
// counting itself to two additions per allocation, for Vexel and floor alike.
#include "alloc_count.h"

#include <cstdlib>
#include <new>

namespace {

size_t g_count = 0;
size_t g_bytes = 0;

void* counted(size_t size) {
  ++g_count;
  g_bytes += size;
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}

void* counted_aligned(size_t size, std::align_val_t align) {
  ++g_count;
  g_bytes += size;
  const size_t a = static_cast<size_t>(align);
  // aligned_alloc wants a size that is a multiple of the alignment.
  if (void* p = std::aligned_alloc(a, (size + a - 1) / a * a)) return p;
  throw std::bad_alloc();
}

}  // namespace

namespace bench {

AllocTotals alloc_totals() { return {g_count, g_bytes}; }

}  // namespace bench

void* operator new(size_t size) { return counted(size); }
void* operator new[](size_t size) { return counted(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  ++g_count;
  g_bytes += size;
  return std::malloc(size ? size : 1);
}
void* operator new[](size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void* operator new(size_t size, std::align_val_t align) { return counted_aligned(size, align); }
void* operator new[](size_t size, std::align_val_t align) { return counted_aligned(size, align); }

void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, size_t) noexcept { std::free(p); }
void operator delete[](void* p, size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, size_t, std::align_val_t) noexcept { std::free(p); }
