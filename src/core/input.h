// SPDX-License-Identifier: MIT
#pragma once

#include "core/key_wait.h"

namespace Kiva {

/// The real input source: the machine's clock, the terminal and the event pipe.
InputSource& terminalSource();

/// One event from the event pipe, as one of Input's codes; waits for it.
int readEvent();

/// The same while nobody reads the terminal; ends the process when the terminal has gone away.
int waitForEvent();

/// True when the terminal's size is no longer the one that curses draws for.
bool sizeChanged();

/// Takes the terminal's new size over, logs it and redraws.
void handleResize();

}  // namespace Kiva
