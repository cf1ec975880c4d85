#include "tessel/ResultRows.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

namespace tessel {
namespace {

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

int to_int(const std::string& text) {
  errno = 0;
  const long long value = std::strtoll(text.c_str(), nullptr, 10);
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

}  // namespace

void ResultRows::Clear() {
  columns_.clear();
  rows_.clear();
  current_ = 0;
}

bool ResultRows::MoveNext() {
  if (current_ < rows_.size()) ++current_;
  return current_ < rows_.size();
}

int ResultRows::index_of(const std::string& column_name) const {
  for (size_t i = 0; i < columns_.size(); ++i) {
    if (columns_[i] == column_name) return static_cast<int>(i);
  }
  for (size_t i = 0; i < columns_.size(); ++i) {
    if (same_ignoring_case(columns_[i], column_name)) return static_cast<int>(i);
  }
  return -1;
}

std::string ResultRows::Field(int column_index) const {
  if (IsEOF() || column_index < 0) return std::string();
  const std::vector<std::string>& row = rows_[current_];
  if (static_cast<size_t>(column_index) >= row.size()) return std::string();
  return row[static_cast<size_t>(column_index)];
}

std::string ResultRows::Field(const std::string& column_name) const {
  return Field(index_of(column_name));
}

int ResultRows::IntField(const std::string& column_name) const {
  return to_int(Field(column_name));
}

int ResultRows::IntField(int column_index) const { return to_int(Field(column_index)); }

}  // namespace tessel
