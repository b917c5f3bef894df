// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Kiva {

/// Text formatted as printf does.
[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...);

/// One line in the system log, formatted as printf does; `priority` is syslog's, with a facility
/// where it is not the default one. May be called from any thread.
[[gnu::format(printf, 2, 3)]] void logLine(int priority, const char* format, ...);
[[gnu::format(printf, 1, 2)]] void logInfo(const char* format, ...);
[[gnu::format(printf, 1, 2)]] void logWarning(const char* format, ...);
[[gnu::format(printf, 1, 2)]] void logError(const char* format, ...);

/// "MESSAGE with errno(N): TEXT" for the current errno, at error priority.
void logErrno(const char* message);

}  // namespace Kiva
