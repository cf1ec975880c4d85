#include "internal/Text.h"

namespace vexel {
namespace internal {
namespace {

template <typename Render>
std::string join(const std::vector<col>& cols, Render render) {
  std::string out;
  for (const col& c : cols) {
    if (!out.empty()) out += " , ";
    out += render(c);
  }
  return out;
}

}  // namespace

std::string join_names(const std::vector<col>& cols) {
  return join(cols, [](const col& c) { return c.col_name(); });
}

std::string join_orders(const std::vector<col>& cols) {
  return join(cols, [](const col& c) { return c.to_order(); });
}

}  // namespace internal
}  // namespace vexel
