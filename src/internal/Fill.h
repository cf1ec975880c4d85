// Writes a text's pieces into room made at the end of a string once, so
// that a text of many short pieces costs one size change instead of a
// checked append per piece. Pieces beyond the room still fit: it grows.
#ifndef VEXEL_INTERNAL_FILL_H
#define VEXEL_INTERNAL_FILL_H

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>

namespace vexel {
namespace internal {

class Fill {
 public:
  // Room for `room` more bytes behind what `out` holds; `out` must not be
  // touched otherwise until the Fill is gone, which trims what was unused.
  Fill(std::string& out, std::size_t room) : out_(out) {
    const std::size_t used = out.size();
    out.resize(used + room);
    p_ = &out[0] + used;
    end_ = &out[0] + out.size();
  }
  ~Fill() { out_.resize(size()); }
  Fill(const Fill&) = delete;
  Fill& operator=(const Fill&) = delete;

  void put(const char* s, std::size_t n) {
    if (n > static_cast<std::size_t>(end_ - p_)) grow(n);
    if (n != 0) std::memcpy(p_, s, n);
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
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    put(digits, static_cast<std::size_t>(end - digits));
  }
  // The length of the text so far.
  std::size_t size() const { return static_cast<std::size_t>(p_ - out_.data()); }
  // Takes back the last `n` bytes written.
  void drop(std::size_t n) { p_ -= n < size() ? n : size(); }

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
  void grow(std::size_t n) {
    const std::size_t used = size();
    out_.resize(used + n > 2 * out_.size() ? used + n : 2 * out_.size());
    p_ = &out_[0] + used;
    end_ = &out_[0] + out_.size();
  }

  std::string& out_;
  char* p_;
  char* end_;
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
