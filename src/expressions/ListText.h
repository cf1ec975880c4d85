// Value lists as SQL text, shared by the array and IN renderers.
#ifndef VEXEL_EXPRESSIONS_LISTTEXT_H
#define VEXEL_EXPRESSIONS_LISTTEXT_H

#include <initializer_list>
#include <string>
#include <vector>

namespace vexel {
namespace internal {

// "1,2,3" with the given separator; "" for an empty list.
std::string int_list(const std::vector<int>& values, const char* separator);
// Each item between `quote` characters, never escaped: "'a','b'".
std::string quoted_list(const std::vector<std::string>& values, const char* separator, char quote);

// Braced string lists as strings; a null item counts as "".
std::vector<std::string> string_items(std::initializer_list<const char*> values);

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_EXPRESSIONS_LISTTEXT_H
