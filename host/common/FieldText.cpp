#include "common/FieldText.h"

#include <charconv>
#include <climits>
#include <limits>

namespace tessel {
namespace host {

int LeadingInt(std::string_view text) {
  size_t at = 0;
  while (at < text.size() && (text[at] == ' ' || (text[at] >= '\t' && text[at] <= '\r'))) ++at;
  const bool negative = at < text.size() && text[at] == '-';
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  long long magnitude = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    // Past INT_MAX + 1 the clamped result is fixed; stop growing there.
    if (magnitude <= static_cast<long long>(INT_MAX) + 1)
      magnitude = magnitude * 10 + (text[at] - '0');
  }
  const long long value = negative ? -magnitude : magnitude;
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

bool WholeInt64(std::string_view text, int64_t& value) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end && !text.empty();
}

bool WholeDouble(std::string_view text, double& value) {
  // PostgreSQL writes the infinities whole; from_chars reads only "inf".
  if (text == "Infinity" || text == "-Infinity") {
    value = text[0] == '-' ? -std::numeric_limits<double>::infinity()
                           : std::numeric_limits<double>::infinity();
    return true;
  }
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end && !text.empty();
}

bool WholeBool(std::string_view text, bool& value) {
  if (text == "t" || text == "true" || text == "1") {
    value = true;
  } else if (text == "f" || text == "false" || text == "0") {
    value = false;
  } else {
    return false;
  }
  return true;
}

}  // namespace host
}  // namespace tessel
