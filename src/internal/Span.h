// A read-only view of a run of elements, so that a list given as a braced
// list or as a vector reaches the builders through one function without
// being copied into a vector first.
#ifndef VEXEL_INTERNAL_SPAN_H
#define VEXEL_INTERNAL_SPAN_H

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <vector>

namespace vexel {
namespace internal {

template <typename T>
class Span {
 public:
  Span(const std::vector<T>& v) : first_(v.data()), size_(v.size()) {}
  Span(const std::initializer_list<T>& l) : first_(std::data(l)), size_(l.size()) {}

  const T* begin() const { return first_; }
  const T* end() const { return first_ + size_; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const T& operator[](std::size_t i) const { return first_[i]; }

 private:
  const T* first_;
  std::size_t size_;
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_SPAN_H
