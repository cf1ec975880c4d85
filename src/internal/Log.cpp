#include "internal/Log.h"

namespace vexel {
namespace internal {

// "bool vexel::QueryBuilder::Execute()" -> "vexel::QueryBuilder::Execute".
// The name is the word before the parameter list: the "(" that matches the
// last ")". Parentheses and angle brackets elsewhere (a return type in
// "(anonymous namespace)", template arguments, GCC's "[with T = ...]",
// MSVC's calling convention) are skipped.
std::string qualified_name(const char* pretty_function) {
  if (pretty_function == nullptr) return std::string();
  std::string text(pretty_function);
  const size_t with = text.rfind(" [with ");
  if (with != std::string::npos) text.erase(with);
  size_t end = text.rfind(')');
  if (end == std::string::npos) return text;
  int depth = 0;
  for (size_t i = end + 1; i-- > 0;) {
    if (text[i] == ')') ++depth;
    if (text[i] == '(' && --depth == 0) {
      end = i;
      break;
    }
  }
  size_t begin = end;
  depth = 0;
  while (begin > 0) {
    const char ch = text[begin - 1];
    if (ch == ')' || ch == '>') ++depth;
    if (ch == '(' || ch == '<') --depth;
    if (ch == ' ' && depth == 0) break;
    --begin;
  }
  // Clang writes "vexel::B &vexel::B::SET(...)": the "&" or "*" of a
  // reference or pointer return type sticks to the name.
  while (begin < end && (text[begin] == '&' || text[begin] == '*')) ++begin;
  return text.substr(begin, end - begin);
}

}  // namespace internal
}  // namespace vexel
