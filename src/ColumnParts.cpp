#include "vexel/ColumnParts.h"

namespace vexel {

void ColumnParts::grow(std::size_t n) {
  // Sizes are kept in 32 bits, as a string would refuse what it cannot hold.
  if (n > UINT32_MAX / 2) throw std::length_error("vexel::col: text too long");
  std::size_t room = 2 * static_cast<std::size_t>(capacity_);
  if (room < n) room = n;
  char* bigger = new char[room];
  put(bigger, std::string_view(data(), total()));
  delete[] heap_;
  heap_ = bigger;
  capacity_ = static_cast<std::uint32_t>(room);
}

}  // namespace vexel
