// A text kept in place while it is short and in a string once it outgrows
// that, appended to piece by piece: a clause of a few short pieces then
// costs no allocation of its own.
#ifndef VEXEL_INTERNAL_SHORTTEXT_H
#define VEXEL_INTERNAL_SHORTTEXT_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "vexel/ColumnParts.h"

namespace vexel {
namespace internal {

template <std::size_t N>
class ShortText {
 public:
  void append(const char* s, std::size_t n) {
    if (heap_.empty() && n <= N - size_) {
      detail::copy_bytes(local_ + size_, s, n);
      size_ += n;
    } else {
      append_outside(s, n);
    }
  }
  void append(std::string_view s) { append(s.data(), s.size()); }
  void append(char c) { append(&c, 1); }
  // The same, for the writers that put pieces into a sink.
  void put(const char* s, std::size_t n) { append(s, n); }
  void put(char c) { append(c); }

  std::string_view view() const {
    return heap_.empty() ? std::string_view(local_, size_) : std::string_view(heap_);
  }
  std::size_t size() const { return heap_.empty() ? size_ : heap_.size(); }
  bool empty() const { return size() == 0; }
  // Back in place, empty.
  void clear() {
    size_ = 0;
    heap_.clear();
  }

 private:
  void append_outside(const char* s, std::size_t n) {
    if (heap_.empty()) {
      // Moves out of place for good, with room to go on growing.
      heap_.reserve(std::max<std::size_t>(2 * (size_ + n), 4 * N));
      heap_.assign(local_, size_);
    }
    heap_.append(s, n);
  }

  char local_[N];
  std::size_t size_ = 0;
  std::string heap_;  // empty while the text is in place
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_SHORTTEXT_H
