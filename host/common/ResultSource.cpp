#include "tessel/ResultSource.h"

namespace tessel {
namespace {

// Names a result remembers; a caller asking for more distinct names (a
// misspelt one in a loop building names) has the rest resolved each time.
constexpr size_t kMaxAsked = 64;

bool same_ignoring_case(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    const unsigned char x = static_cast<unsigned char>(a[i]);
    const unsigned char y = static_cast<unsigned char>(b[i]);
    const unsigned char lx = (x >= 'A' && x <= 'Z') ? x + ('a' - 'A') : x;
    const unsigned char ly = (y >= 'A' && y <= 'Z') ? y + ('a' - 'A') : y;
    if (lx != ly) return false;
  }
  return true;
}

}  // namespace

int ResultSource::IndexOf(const std::string& name) const {
  if (next_asked_ < asked_.size() && asked_[next_asked_].first == name) {
    const int column = asked_[next_asked_].second;
    next_asked_ = (next_asked_ + 1) % asked_.size();
    return column;
  }
  for (size_t i = 0; i < asked_.size(); ++i) {
    if (asked_[i].first == name) {
      next_asked_ = (i + 1) % asked_.size();
      return asked_[i].second;
    }
  }
  if (asked_.size() >= kMaxAsked) return resolve(name);
  asked_.emplace_back(name, resolve(name));
  next_asked_ = 0;
  return asked_.back().second;
}

int ResultSource::resolve(const std::string& name) const {
  for (size_t i = 0; i < names_.size(); ++i) {
    if (names_[i] == name) return static_cast<int>(i);
  }
  for (size_t i = 0; i < names_.size(); ++i) {
    if (same_ignoring_case(names_[i], name)) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace tessel
