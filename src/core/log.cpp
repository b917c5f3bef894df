// SPDX-License-Identifier: MIT
#include "core/log.h"

#include <syslog.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "hostctl/lib/platform.h"

namespace Kiva {

namespace {

[[gnu::format(printf, 1, 0)]] std::string formatList(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, again);
  va_end(again);
  std::string text(length < 0 ? 0 : static_cast<std::size_t>(length), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, arguments);
  return text;
}

[[gnu::format(printf, 2, 0)]] void logList(int priority, const char* format, va_list arguments) {
  HostCtl::Lib::platform().Log(priority, formatList(format, arguments));
}

}  // namespace

std::string formatted(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text = formatList(format, arguments);
  va_end(arguments);
  return text;
}

void logLine(int priority, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  logList(priority, format, arguments);
  va_end(arguments);
}

void logInfo(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  logList(LOG_INFO, format, arguments);
  va_end(arguments);
}

void logWarning(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  logList(LOG_WARNING, format, arguments);
  va_end(arguments);
}

void logError(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  logList(LOG_ERR, format, arguments);
  va_end(arguments);
}

void logErrno(const char* message) {
  const int error = errno;
  char buffer[128];
  logError("%s with errno(%d): %s", message, error, strerror_r(error, buffer, sizeof buffer));
}

}  // namespace Kiva
