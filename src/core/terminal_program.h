// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/lib/platform.h"

namespace Kiva {

/// Lends the terminal, as it was before curses, to a program of the host until that ends; then
/// curses has it again and the next update repaints everything. The program runs with this
/// program's environment in a foreground process group of its own. A stop request or a card taken
/// out ends the program as well; a terminal that has another size afterwards ends the process as a
/// resize does. A program that cannot start changes nothing.
void runOnTerminal(const HostCtl::Lib::Program& program);

}  // namespace Kiva
