// Default base library: printf-style formatting and string replacement.
#include "olk/StringUtil.h"

#include <cstdarg>
#include <cstdio>

#include <locale.h>
#if defined(__APPLE__)
#include <xlocale.h>
#endif

namespace Olk {
namespace Base {
namespace StringUtil {
namespace {

// Texts built here become SQL and log lines, which must not follow the
// host's locale: "%f" under de_DE would write a decimal comma. Formatting
// runs under the C locale, switched for the calling thread only.
#if defined(_WIN32)
_locale_t c_locale() {
  static const _locale_t locale = _create_locale(LC_ALL, "C");
  return locale;
}

int format_c(char* buffer, size_t size, const char* format, va_list args) {
  return buffer == nullptr ? _vscprintf_l(format, c_locale(), args)
                           : _vsnprintf_s_l(buffer, size, _TRUNCATE, format, c_locale(), args);
}
#else
locale_t c_locale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
  return locale;
}

int format_c(char* buffer, size_t size, const char* format, va_list args) {
  const locale_t c = c_locale();
  const locale_t previous = c != static_cast<locale_t>(0) ? uselocale(c) : static_cast<locale_t>(0);
  const int written = std::vsnprintf(buffer, size, format, args);
  if (previous != static_cast<locale_t>(0)) uselocale(previous);
  return written;
}
#endif

}  // namespace

std::string vstr_fmt(const char* format, va_list args) {
  if (format == nullptr) return std::string();
  va_list measure;
  va_copy(measure, args);
  const int size = format_c(nullptr, 0, format, measure);
  va_end(measure);
  if (size <= 0) return std::string();
  std::string text(static_cast<size_t>(size), '\0');
  va_list fill;
  va_copy(fill, args);
  format_c(&text[0], text.size() + 1, format, fill);
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
