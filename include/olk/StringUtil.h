/// \file
/// The host's base string helpers used by the library to build texts.
#ifndef OLK_STRINGUTIL_H
#define OLK_STRINGUTIL_H

#include <cstdarg>
#include <string>

#include "olk/Export.h"
#include "olk/Log.h"  // OLK_PRINTF_FORMAT

namespace Olk {
namespace Base {
namespace StringUtil {

/// printf-style formatting into a string of whatever length it needs.
OLK_BASE_API std::string str_fmt(const char* format, ...) OLK_PRINTF_FORMAT(1, 2);

/// The same with an argument list; `args` is left untouched (it is copied).
OLK_BASE_API std::string vstr_fmt(const char* format, va_list args);

/// A copy of `text` with every occurrence of `from` replaced by `to`; an
/// empty `from` leaves the text unchanged.
OLK_BASE_API std::string StringReplace(const std::string& text, const std::string& from,
                                       const std::string& to);

}  // namespace StringUtil
}  // namespace Base
}  // namespace Olk

#endif  // OLK_STRINGUTIL_H
