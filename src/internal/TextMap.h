// Name-to-text pairs kept sorted by name, a later value for a name
// replacing the earlier one: SET targets render in name order. Names and
// values share one text, and the first few entries and their text sit in
// place, so that a SET of a few columns costs no allocation of its own.
#ifndef VEXEL_INTERNAL_TEXTMAP_H
#define VEXEL_INTERNAL_TEXTMAP_H

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "internal/Text.h"
#include "vexel/ColumnParts.h"

namespace vexel {
namespace internal {

class TextMap {
 public:
  using Entry = std::pair<std::string_view, std::string_view>;

  // Keyed by the column's text in dialect `db`, written straight where
  // the map's text ends; it stays there only when it is new, a known name
  // taking the new value instead.
  void set(const col& c, tessel::DBTYPE db, std::string_view value);

  class const_iterator {
   public:
    const_iterator(const TextMap* map, std::size_t at) : map_(map), at_(at) {}
    Entry operator*() const {
      const Slot& s = map_->slot(at_);
      return {map_->view(s.name), map_->view(s.value)};
    }
    const_iterator& operator++() {
      ++at_;
      return *this;
    }
    bool operator!=(const const_iterator& other) const { return at_ != other.at_; }

   private:
    const TextMap* map_;
    std::size_t at_;
  };

  const_iterator begin() const { return {this, 0}; }
  const_iterator end() const { return {this, count_}; }
  std::size_t size() const { return count_; }
  // The bytes of every name and value kept, replaced values included: at
  // least what the entries hold.
  std::size_t text_size() const { return used_; }
  bool empty() const { return count_ == 0; }

 private:
  struct Part {
    std::uint32_t from = 0, size = 0;
  };
  struct Slot {
    Part name, value;
  };
  static constexpr std::size_t kInline = 4;
  static constexpr std::size_t kText = 64;

  static Part part(std::size_t from, std::size_t size) {
    return Part{static_cast<std::uint32_t>(from), static_cast<std::uint32_t>(size)};
  }
  void check(std::size_t n) const {
    if (n > UINT32_MAX / 2 - used_) throw std::length_error("vexel: SET text too long");
  }
  // Room for `n` more bytes where the text ends.
  char* room(std::size_t n) {
    if (more_text_.empty() && n <= kText - used_) return local_text_ + used_;
    if (more_text_.empty()) more_text_.assign(local_text_, used_);
    more_text_.resize(used_ + n);
    return &more_text_[used_];
  }
  const char* text() const { return more_text_.empty() ? local_text_ : more_text_.data(); }
  std::string_view view(Part p) const { return view(text(), p); }
  static std::string_view view(const char* t, Part p) { return {t + p.from, p.size}; }
  Slot& slot(std::size_t k) { return k < kInline ? inline_[k] : more_[k - kInline]; }
  const Slot& slot(std::size_t k) const { return k < kInline ? inline_[k] : more_[k - kInline]; }

  // The text in place until it outgrows it, then all of it in more_text_.
  char local_text_[kText];
  std::size_t used_ = 0;
  std::string more_text_;
  Slot inline_[kInline];
  std::vector<Slot> more_;
  std::size_t count_ = 0;
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_TEXTMAP_H
