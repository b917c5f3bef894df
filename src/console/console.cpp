// SPDX-License-Identifier: MIT
#include "console/console.h"

#include <memory>

#include "console/host_facts.h"
#include "console/welcome_window.h"
#include "core/key_wait.h"
#include "core/log.h"
#include "core/pid_file.h"
#include "core/screen.h"
#include "core/signals.h"
#include "core/start.h"
#include "core/terminal.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/platform.h"
#include "network/hosts_backup.h"

namespace Kiva {

namespace {

void readArgument(const char* virtualTerminal) {
  if (!virtualTerminal) return;
  const auto number = parseVirtualTerminal(virtualTerminal);
  if (number)
    terminal().vtNumber = *number;
  else
    logError("Invalid VT specified for KIVA: %s", virtualTerminal);
}

void prepareTerminal() {
  silenceStandardError();
  saveTerminalAttributes();
  prepareTerminalType();
  HostCtl::Lib::platform().OpenLog();
  logInfo("Starting KIVA");
  replaceUnusableTerminalType();
  writePidFile();
  takeVirtualTerminal();
}

void runWelcomeWindow() {
  try {
    WelcomeWindow welcome;
    runWindow(welcome);
  } catch (const HostCtl::Lib::HostCtlException& exception) {
    logError("KIVA aborted by exception: %s", exception.what());
  }
}

}  // namespace

int runConsole(const ConsoleOptions& options) {
  prepareProcess();
  keyWait().clockSpeed = options.clockSpeed;
  readArgument(options.virtualTerminal);
  startSignalThread();
  reloadIdleTimeout();
  prepareTerminal();
  repairHostsFile();
  startScreen();
  registerHostFacts();
  runWelcomeWindow();
  endScreen();
  return 0;
}

}  // namespace Kiva
