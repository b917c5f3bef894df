// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

struct ConsoleOptions {
  /// The command line's argument; null without one.
  const char* virtualTerminal = nullptr;
  /// How many times as fast as the world the console's clock runs.
  int clockSpeed = 1;
};

/// The console from start-up to its end, on the host that main put under it. Returns the exit
/// status; most ends happen inside, by exit: a stop signal, a resize, a terminal that went away.
int runConsole(const ConsoleOptions& options);

}  // namespace Kiva
