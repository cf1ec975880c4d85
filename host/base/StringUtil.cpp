// Default base library: printf-style formatting and string replacement.
#include "olk/StringUtil.h"

#include <cstdarg>
#include <cstdio>

namespace Olk {
namespace Base {
namespace StringUtil {

std::string vstr_fmt(const char* format, va_list args) {
  if (format == nullptr) return std::string();
  va_list measure;
  va_copy(measure, args);
  const int size = std::vsnprintf(nullptr, 0, format, measure);
  va_end(measure);
  if (size <= 0) return std::string();
  std::string text(static_cast<size_t>(size), '\0');
  va_list fill;
  va_copy(fill, args);
  std::vsnprintf(&text[0], text.size() + 1, format, fill);
  va_end(fill);
  return text;
}

std::string str_fmt(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::string text = vstr_fmt(format, args);
  va_end(args);
  return text;
}

std::string StringReplace(const std::string& text, const std::string& from, const std::string& to) {
  if (from.empty()) return text;
  std::string out;
  out.reserve(text.size());
  size_t pos = 0;
  for (size_t hit = text.find(from); hit != std::string::npos; hit = text.find(from, pos)) {
    out.append(text, pos, hit - pos);
    out.append(to);
    pos = hit + from.size();
  }
  out.append(text, pos, std::string::npos);
  return out;
}

}  // namespace StringUtil
}  // namespace Base
}  // namespace Olk
