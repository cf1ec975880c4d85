// Writes a text's pieces into room made once, so that a text of many short
// pieces costs one size change instead of a checked append per piece. A
// text that fits a buffer on the stack is written there and appended to the
// string in one copy when the Fill goes; a longer one is written into room
// made at the end of the string. Pieces beyond the room still fit: it grows.
#ifndef VEXEL_INTERNAL_FILL_H
#define VEXEL_INTERNAL_FILL_H

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "vexel/ColumnParts.h"

namespace vexel {
namespace internal {

class Fill {
 public:
  // Room for `room` more bytes behind what `out` holds; `out` must not be
  // touched otherwise until the Fill is gone, which leaves the text in it.
  // On the stack, `out` always has room for what is written, so that the
  // copy into it cannot fail in the destructor.
  Fill(std::string& out, std::size_t room) : out_(out), kept_(out.size()) {
    if (room <= kLocal) {
      // The final append may not throw from the destructor: make its room now.
      make_room(kept_ + room);
      begin_ = p_ = local_;
      end_ = local_ + room;
    } else {
      spill(room);
    }
  }
  ~Fill() {
    if (begin_ == local_) {
      if (kept_ < out_.size()) out_.resize(kept_);
      out_.append(local_, written());
    } else {
      out_.resize(kept_ + written());
    }
  }
  Fill(const Fill&) = delete;
  Fill& operator=(const Fill&) = delete;

  void put(const char* s, std::size_t n) {
    if (n > static_cast<std::size_t>(end_ - p_)) grow(n);
    detail::copy_bytes(p_, s, n);
    p_ += n;
  }
  void put(const std::string& s) { put(s.data(), s.size()); }
  void put(const char* s) { put(s, std::strlen(s)); }
  void put(char c) {
    if (p_ == end_) grow(1);
    *p_++ = c;
  }
  // A number as std::to_string writes it.
  void put_number(int value) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    put(digits, static_cast<std::size_t>(end - digits));
  }
  // The length of the text so far.
  std::size_t size() const { return kept_ + written(); }
  // Takes back the last `n` bytes written.
  void drop(std::size_t n) {
    if (n <= written()) {
      p_ -= n;
      return;
    }
    n -= written();
    p_ = begin_;
    kept_ -= n < kept_ ? n : kept_;
    if (begin_ != local_) {
      // The text lies in `out` itself: what is kept ends where writing goes on.
      begin_ = p_ = &out_[0] + kept_;
    }
  }

  // The string operations the renderers use, so that a text written into a
  // string reads the same written into room.
  Fill& append(const std::string& s) {
    put(s);
    return *this;
  }
  Fill& append(const char* s) {
    put(s);
    return *this;
  }
  Fill& append(std::string_view s) {
    put(s.data(), s.size());
    return *this;
  }
  Fill& append(const std::string& s, std::size_t from, std::size_t n) {
    if (from < s.size()) put(s.data() + from, n < s.size() - from ? n : s.size() - from);
    return *this;
  }
  Fill& operator+=(const std::string& s) { return append(s); }
  Fill& operator+=(const char* s) { return append(s); }
  Fill& operator+=(char c) {
    put(c);
    return *this;
  }

 private:
  static constexpr std::size_t kLocal = 1024;

  std::size_t written() const { return static_cast<std::size_t>(p_ - begin_); }
  // Capacity for `n` bytes in `out`, at least doubled when it grows, so that
  // a text filled piece by piece (rows of a bulk INSERT) grows linearly.
  void make_room(std::size_t n) {
    if (n > out_.capacity()) out_.reserve(n > 2 * out_.capacity() ? n : 2 * out_.capacity());
  }

  // Moves writing into `out` itself, with room for `room` more bytes.
  void spill(std::size_t room) {
    const std::size_t used = written();
    const bool was_local = begin_ == local_;
    out_.resize(kept_);
    if (was_local) out_.append(local_, used);
    kept_ = out_.size() - used;
    out_.resize(out_.size() + room);
    begin_ = &out_[0] + kept_;
    p_ = begin_ + used;
    end_ = &out_[0] + out_.size();
  }
  void grow(std::size_t n) {
    const std::size_t total = end_ - begin_;
    const std::size_t used = written();
    const std::size_t wanted = used + n > 2 * total ? used + n : 2 * total;
    if (begin_ == local_) {
      if (wanted > kLocal) {
        spill(wanted - used);
      } else {
        make_room(kept_ + wanted);
        end_ = local_ + wanted;
      }
      return;
    }
    out_.resize(kept_ + wanted);
    begin_ = &out_[0] + kept_;
    p_ = begin_ + used;
    end_ = &out_[0] + out_.size();
  }

  std::string& out_;
  std::size_t kept_;  // bytes of `out` before the text
  char* begin_ = nullptr;
  char* p_ = nullptr;
  char* end_ = nullptr;
  char local_[kLocal];
};

// The same pieces appended to a string as they come, for a text of a few
// pieces, where making room first costs more than it saves.
class Append {
 public:
  explicit Append(std::string& out) : out_(out) {}
  void put(const char* s, std::size_t n) { out_.append(s, n); }
  void put(const std::string& s) { out_ += s; }
  void put(const char* s) { out_ += s; }
  void put(char c) { out_ += c; }

 private:
  std::string& out_;
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_FILL_H
