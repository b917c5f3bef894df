// SPDX-License-Identifier: MIT
#pragma once

#include "core/key_wait.h"

namespace Kiva {

/// The real input source: the machine's clock, the terminal and the event pipe.
InputSource& terminalSource();

/// Takes the terminal's new size over, logs it and redraws.
void handleResize();

}  // namespace Kiva
