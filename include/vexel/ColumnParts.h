/// \file
/// The texts a column is made of, kept side by side in one buffer.
#ifndef VEXEL_COLUMNPARTS_H
#define VEXEL_COLUMNPARTS_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "vexel/export.h"

namespace vexel {

/// Byte copies for the short texts of names and keywords.
namespace detail {

/// Copies `n` bytes: short runs in a few moves instead of a call.
inline void copy_bytes(char* to, const char* from, std::size_t n) {
  if (n >= 8 && n <= 16) {
    std::uint64_t a, b;
    std::memcpy(&a, from, 8);
    std::memcpy(&b, from + n - 8, 8);
    std::memcpy(to, &a, 8);
    std::memcpy(to + n - 8, &b, 8);
  } else if (n >= 4 && n < 8) {
    std::uint32_t a, b;
    std::memcpy(&a, from, 4);
    std::memcpy(&b, from + n - 4, 4);
    std::memcpy(to, &a, 4);
    std::memcpy(to + n - 4, &b, 4);
  } else if (n > 0 && n < 4) {
    to[0] = from[0];
    to[n / 2] = from[n / 2];
    to[n - 1] = from[n - 1];
  } else if (n != 0) {
    std::memcpy(to, from, n);
  }
}

}  // namespace detail

/// A column's schema, table, name and ordering texts in one buffer, in
/// place while they are short: copying, moving or freeing a column is then
/// one block's work instead of four strings'. An implementation detail of
/// col; hosts use col's own members.
class VEXEL_API ColumnParts {
 public:
  /// Which text.
  enum Part { kSchema = 0, kTable = 1, kName = 2, kOrder = 3 };

  ColumnParts() = default;
  /// Only a name: the usual column.
  explicit ColumnParts(std::string_view name) {
    reserve(name.size());
    put(data(), name);
    size_[kName] = static_cast<std::uint32_t>(name.size());
  }
  /// The given schema, table and name, no ordering.
  ColumnParts(std::string_view schema, std::string_view table, std::string_view name) {
    const std::size_t total = schema.size() + table.size() + name.size();
    reserve(total);
    char* p = data();
    put(p, schema);
    put(p + schema.size(), table);
    put(p + schema.size() + table.size(), name);
    size_[kSchema] = static_cast<std::uint32_t>(schema.size());
    size_[kTable] = static_cast<std::uint32_t>(table.size());
    size_[kName] = static_cast<std::uint32_t>(name.size());
  }
  ///@{
  /// Copies and moves; a moved-from column keeps empty texts.
  ColumnParts(const ColumnParts& other) : size_{} { copy_from(other); }
  ColumnParts(ColumnParts&& other) noexcept : size_{} { take_from(other); }
  ColumnParts& operator=(const ColumnParts& other) {
    if (this != &other) {
      clear();
      copy_from(other);
    }
    return *this;
  }
  ColumnParts& operator=(ColumnParts&& other) noexcept {
    if (this != &other) {
      release();
      take_from(other);
    }
    return *this;
  }
  ///@}
  ~ColumnParts() { delete[] heap_; }

  /// The text of one part.
  std::string_view get(Part k) const { return {data() + offset(k), size_[k]}; }
  /// The four texts, in Part order.
  struct Views {
    std::string_view schema;  ///< the schema part
    std::string_view table;   ///< the table part
    std::string_view name;    ///< the name part
    std::string_view order;   ///< the order part
  };
  /// All four texts at once: one walk over the sizes instead of four.
  Views views() const {
    const char* p = data();
    const std::size_t a = size_[kSchema], b = a + size_[kTable], c = b + size_[kName];
    return {
        {p, size_[kSchema]}, {p + a, size_[kTable]}, {p + b, size_[kName]}, {p + c, size_[kOrder]}};
  }

  /// Replaces one part's text.
  void set(Part k, std::string_view text) { splice(k, 0, size_[k], text); }
  /// Appends to one part's text.
  void append(Part k, std::string_view text) { splice(k, size_[k], 0, text); }
  /// Puts text in front of one part's text.
  void prepend(Part k, std::string_view text) { splice(k, 0, 0, text); }

 private:
  static constexpr std::uint32_t kInline = 48;

  const char* data() const { return heap_ != nullptr ? heap_ : local_; }
  char* data() { return heap_ != nullptr ? heap_ : local_; }
  std::size_t offset(Part k) const {
    std::size_t at = 0;
    for (int i = 0; i < k; ++i) at += size_[i];
    return at;
  }
  std::size_t total() const { return offset(kOrder) + size_[kOrder]; }
  static void put(char* to, std::string_view text) {
    detail::copy_bytes(to, text.data(), text.size());
  }

  // Room for `n` bytes, keeping what is held.
  void reserve(std::size_t n) {
    if (n > capacity_) grow(n);
  }
  // reserve past the room held; out of line, so that the usual short
  // column is made without it.
  void grow(std::size_t n);
  // Replaces `drop` bytes at `at` within part k by `text`. The text may lie
  // in this very buffer (a part set from another of the same column).
  void splice(Part k, std::size_t at, std::size_t drop, std::string_view text) {
    const std::less<const char*> before;
    if (!text.empty() && !before(text.data(), data()) && before(text.data(), data() + total())) {
      const std::string copy(text);
      splice(k, at, drop, copy);
      return;
    }
    const std::size_t from = offset(k) + at;
    const std::size_t old_total = total();
    const std::size_t new_total = old_total - drop + text.size();
    reserve(new_total);
    char* p = data();
    std::memmove(p + from + text.size(), p + from + drop, old_total - from - drop);
    put(p + from, text);
    size_[k] = static_cast<std::uint32_t>(size_[k] - drop + text.size());
  }
  void clear() {
    for (std::uint32_t& s : size_) s = 0;
  }
  void copy_from(const ColumnParts& other) {
    reserve(other.total());
    put(data(), std::string_view(other.data(), other.total()));
    for (int i = 0; i < 4; ++i) size_[i] = other.size_[i];
  }
  void take_from(ColumnParts& other) {
    if (other.heap_ != nullptr) {
      heap_ = other.heap_;
      capacity_ = other.capacity_;
      other.heap_ = nullptr;
      other.capacity_ = kInline;
    } else {
      std::memcpy(local_, other.local_, kInline);
    }
    for (int i = 0; i < 4; ++i) size_[i] = other.size_[i];
    other.clear();
  }
  void release() {
    delete[] heap_;
    heap_ = nullptr;
    capacity_ = kInline;
    clear();
  }

  std::uint32_t size_[4] = {0, 0, 0, 0};
  std::uint32_t capacity_ = kInline;
  char* heap_ = nullptr;
  char local_[kInline];
};

}  // namespace vexel

#endif  // VEXEL_COLUMNPARTS_H
