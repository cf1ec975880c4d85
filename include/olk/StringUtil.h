/// \file
/// The host's base string helpers used by the library to build texts.
#ifndef OLK_STRINGUTIL_H
#define OLK_STRINGUTIL_H

#include <cstdarg>
#include <string>

#include "olk/Export.h"
#include "olk/Log.h"  // OLK_PRINTF_FORMAT

namespace Olk {
/// The host's base library.
namespace Base {
/// String helpers the library builds catalogue texts and JSON paths with; a
/// host with its own base library provides the same three functions.
namespace StringUtil {

/// printf-style formatting into a string of whatever length it needs.
/// The library builds the catalogue's statements with it (CDBSystemInfo),
/// so a host's own
/// version formats numbers under the "C" locale: "%f" writes a decimal point
/// whatever the process locale.
OLK_BASE_API std::string str_fmt(const char* format, ...) OLK_PRINTF_FORMAT(1, 2);

/// The same with an argument list; `args` is left untouched (it is copied).
OLK_BASE_API std::string vstr_fmt(const char* format, va_list args);

/// A copy of `text` with every occurrence of `from` replaced by `to`; an
/// empty `from` leaves the text unchanged. The library turns JSON paths into
/// each dialect's form with it (JSON_SET, JSON_KEY_DELETE).
OLK_BASE_API std::string StringReplace(const std::string& text, const std::string& from,
                                       const std::string& to);

}  // namespace StringUtil
}  // namespace Base
}  // namespace Olk

#endif  // OLK_STRINGUTIL_H
