// Decodes a fuzz input into choices: small numbers, dialect codes and texts
// that favour names the engine knows (so statements also succeed) and
// hostile ones (quotes, printf directives, NUL bytes, long runs).
#ifndef VEXEL_FUZZ_INPUT_H
#define VEXEL_FUZZ_INPUT_H

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "tessel/DBType.h"

namespace vexel_fuzz {

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : provider_(data, size) {}

  bool done() { return provider_.remaining_bytes() == 0; }
  bool flag() { return provider_.ConsumeBool(); }
  // 0 .. n-1.
  int pick(int n) { return n <= 1 ? 0 : provider_.ConsumeIntegralInRange<int>(0, n - 1); }
  int small() { return provider_.ConsumeIntegralInRange<int>(-2, 5); }
  template <typename T>
  T number() {
    return provider_.ConsumeIntegral<T>();
  }
  // Any value of the type, infinities and NaN included.
  template <typename T>
  T floating() {
    switch (pick(8)) {
      case 0:
        return std::numeric_limits<T>::infinity();
      case 1:
        return std::numeric_limits<T>::quiet_NaN();
      default:
        return provider_.ConsumeFloatingPoint<T>();
    }
  }
  char byte() { return static_cast<char>(provider_.ConsumeIntegral<uint8_t>()); }

  // The three dialects, PostgreSQL's fallback for unknown codes and the
  // codes a host may hand over by mistake.
  tessel::DBTYPE dialect() {
    static constexpr int32_t kCodes[] = {1, 2, 3, 0, 7, -1};
    return static_cast<tessel::DBTYPE>(kCodes[pick(6)]);
  }

  // A name of the test schema most of the time.
  std::string name() { return pick(4) == 0 ? text() : word(); }

  // A text short enough to be repeated often in one statement.
  std::string short_text() {
    return pick(2) == 0 ? word() : provider_.ConsumeRandomLengthString(24);
  }

  std::string text() {
    static const std::string kHostile[] = {
        "'",    "''",    "\"",        "\\",    "%s",      "%n%n%d%s", ";",   "--",
        "/*",   "\n",    {"a\0b", 3}, "{a,b}", "'{a,b}'", "'\"x\"'",  "$.a", "\xff\xfe",
        "NULL", "1e308", " ",         "",      ",",       "(",        ")",   "a.b.c"};
    switch (pick(6)) {
      case 0:
        return word();
      case 1:
        return provider_.ConsumeRandomLengthString(24);
      case 2:
      case 3:
        return kHostile[pick(sizeof(kHostile) / sizeof(kHostile[0]))];
      case 4: {
        const std::size_t length = provider_.ConsumeIntegralInRange<std::size_t>(0, 4096);
        return std::string(length, byte());
      }
      default:
        return word() + kHostile[pick(sizeof(kHostile) / sizeof(kHostile[0]))] + word();
    }
  }

 private:
  std::string word() {
    static const char* const kWords[] = {"main", "public", "t1",   "t2", "v1",       "id",
                                         "a",    "b",      "tags", "s",  "t1_id_seq"};
    return kWords[pick(sizeof(kWords) / sizeof(kWords[0]))];
  }

  FuzzedDataProvider provider_;
};

}  // namespace vexel_fuzz

#endif  // VEXEL_FUZZ_INPUT_H
