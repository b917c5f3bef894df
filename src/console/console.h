// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// The console from start-up to its end, on the host that main put under it. `virtualTerminal` is
/// the command line's argument, null without one. Returns the exit status; most ends happen inside,
/// by exit: a stop signal, a resize, a terminal that went away.
int runConsole(const char* virtualTerminal);

}  // namespace Kiva
