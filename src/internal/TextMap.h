// Name-to-text pairs kept sorted by name, a later value for a name
// replacing the earlier one: SET targets render in name order. A few pairs
// in one block cost one allocation, where a tree costs one per pair.
#ifndef VEXEL_INTERNAL_TEXTMAP_H
#define VEXEL_INTERNAL_TEXTMAP_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace vexel {
namespace internal {

class TextMap {
 public:
  using Entry = std::pair<std::string, std::string>;

  void set(std::string name, std::string_view value) {
    if (entries_.capacity() == 0) entries_.reserve(4);
    auto at = std::lower_bound(entries_.begin(), entries_.end(), name,
                               [](const Entry& e, const std::string& n) { return e.first < n; });
    if (at != entries_.end() && at->first == name) {
      at->second.assign(value.data(), value.size());
      return;
    }
    entries_.emplace(at, std::piecewise_construct, std::forward_as_tuple(std::move(name)),
                     std::forward_as_tuple(value.data(), value.size()));
  }

  std::vector<Entry>::const_iterator begin() const { return entries_.begin(); }
  std::vector<Entry>::const_iterator end() const { return entries_.end(); }
  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }
  void clear() { entries_.clear(); }

 private:
  std::vector<Entry> entries_;
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_TEXTMAP_H
