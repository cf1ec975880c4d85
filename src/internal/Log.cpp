#include "internal/Log.h"

#include <cstring>

namespace vexel {
namespace internal {

std::string qualified_name(const char* pretty_function) {
  if (pretty_function == nullptr) return std::string();
  const std::string text(pretty_function);
  // MSVC's signature carries a calling convention; GCC and Clang a return
  // type. The qualified name is the last blank-free word before the
  // parameter list.
  size_t end = text.find('(');
  if (end == std::string::npos) end = text.size();
  const size_t space = text.rfind(' ', end);
  const size_t begin = space == std::string::npos ? 0 : space + 1;
  return text.substr(begin, end - begin);
}

}  // namespace internal
}  // namespace vexel
