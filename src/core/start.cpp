// SPDX-License-Identifier: MIT
#include "core/start.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <string>

#include "core/log.h"
#include "core/screen.h"

namespace Kiva {

namespace {

// A descriptor that the terminal's numbers lack would be given to the next file that is opened.
void openMissingDescriptors() {
  for (int number = 0; number <= STDERR_FILENO; ++number)
    if (fcntl(number, F_GETFD) < 0 && open("/dev/null", O_RDWR) != number) return;
}

std::string currentFailure() {
  try {
    if (const auto exception = std::current_exception()) std::rethrow_exception(exception);
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (...) {
  }
  return "unknown";
}

[[noreturn]] void restoreTerminalAndAbort() {
  leaveScreen();
  logError("KIVA ended by an unexpected failure: %s", currentFailure().c_str());
  std::abort();
}

}  // namespace

void prepareProcess() {
  openMissingDescriptors();
  signal(SIGCHLD, SIG_DFL);
  signal(SIGPIPE, SIG_IGN);
  signal(SIGHUP, SIG_IGN);
  signal(SIGTTOU, SIG_IGN);
  std::set_terminate(restoreTerminalAndAbort);
}

void silenceStandardError() {
  const int null = open("/dev/null", O_WRONLY);
  if (null < 0) return;
  dup2(null, STDERR_FILENO);
  if (null != STDERR_FILENO) close(null);
}

}  // namespace Kiva
