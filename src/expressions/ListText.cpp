#include "expressions/ListText.h"

namespace vexel {
namespace internal {
namespace {

template <typename Items, typename Render>
std::string joined(const Items& items, const char* separator, Render render) {
  std::string out;
  bool first = true;
  for (const auto& item : items) {
    if (!first) out += separator;
    out += render(item);
    first = false;
  }
  return out;
}

}  // namespace

std::string int_list(const std::vector<int>& values, const char* separator) {
  return joined(values, separator, [](int v) { return std::to_string(v); });
}

std::string quoted_list(const std::vector<std::string>& values, const char* separator, char quote) {
  return joined(values, separator, [quote](const std::string& v) { return quote + v + quote; });
}

std::vector<std::string> string_items(std::initializer_list<const char*> values) {
  std::vector<std::string> out;
  for (const char* v : values) out.emplace_back(v != nullptr ? v : "");
  return out;
}

}  // namespace internal
}  // namespace vexel
