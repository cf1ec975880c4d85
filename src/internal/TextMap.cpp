#include "internal/TextMap.h"

namespace vexel {
namespace internal {

void TextMap::set(const col& c, tessel::DBTYPE db, std::string_view value) {
  const std::size_t name_size = ColumnText::size(c, db);
  const std::size_t need = name_size + value.size();
  check(need);
  // Room for both where the text ends; `used_` moves past what is kept.
  char* const end = room(need);
  Into into{end};
  ColumnText::put(into, c, db);
  const char* const t = end - used_;
  const std::string_view name(end, name_size);
  std::size_t at = 0;
  while (at < count_ && view(t, slot(at).name) < name) ++at;
  if (at < count_ && view(t, slot(at).name) == name) {
    // The value goes where the name was; the old value's bytes stay
    // behind, unused: replacing is rare.
    detail::copy_bytes(end, value.data(), value.size());
    slot(at).value = part(used_, value.size());
    used_ += value.size();
    if (!more_text_.empty()) more_text_.resize(used_);
    return;
  }
  detail::copy_bytes(end + name_size, value.data(), value.size());
  const Slot s{part(used_, name_size), part(used_ + name_size, value.size())};
  used_ += need;
  if (count_ < kInline) {
    for (std::size_t k = count_; k > at; --k) inline_[k] = inline_[k - 1];
    inline_[at] = s;
  } else {
    // Sorted across both: shift through the overflow, then the inline tail.
    more_.push_back(Slot{});
    for (std::size_t k = count_; k > at; --k) slot(k) = slot(k - 1);
    slot(at) = s;
  }
  ++count_;
}

}  // namespace internal
}  // namespace vexel
