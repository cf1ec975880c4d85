/// \file
/// Sink of the default logging library (host/log). write_log formats each
/// line and hands it here; a host or a test replaces the sink to route or
/// capture the lines. The default sink prints levels >= 4 to standard error.
#ifndef OLK_LOGSINK_H
#define OLK_LOGSINK_H

#include <functional>
#include <string>

#include "olk/Export.h"

/// The default host libraries shipped with the library (logger and base helpers).
namespace Olk {
/// The default logger's sink: where formatted lines go.
namespace Log {

/// Receives each formatted line: its level, the module tag ("Vexel") and the text.
using Sink = std::function<void(int level, const std::string& module, const std::string& text)>;

/// Installs `sink`; an empty function restores the default sink. Returns the
/// sink that was installed before, so callers can put it back. A sink may
/// call SetSink itself; a line it writes while it runs goes to the default
/// sink, never back into itself.
OLK_LOG_API Sink SetSink(Sink sink);

/// The default sink: "[module] text" on standard error for levels >= 4.
OLK_LOG_API void DefaultSink(int level, const std::string& module, const std::string& text);

}  // namespace Log
}  // namespace Olk

#endif  // OLK_LOGSINK_H
