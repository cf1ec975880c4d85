// Values read from their text, as the engines write them.
#ifndef TESSEL_HOST_FIELDTEXT_H
#define TESSEL_HOST_FIELDTEXT_H

#include <cstdint>
#include <string_view>

namespace tessel {
namespace host {

// The text's leading integer (after blanks, with a sign), clamped to int;
// 0 when it has none.
int LeadingInt(std::string_view text);
// True when the whole text is one value of the type.
bool WholeInt64(std::string_view text, int64_t& value);
bool WholeDouble(std::string_view text, double& value);
bool WholeBool(std::string_view text, bool& value);

}  // namespace host
}  // namespace tessel

#endif  // TESSEL_HOST_FIELDTEXT_H
