// SPDX-License-Identifier: MIT
#pragma once

#include "core/window.h"

namespace Kiva {

/// Shows a log of the host in the pager, on the whole terminal, and comes back to `window`, which
/// is in the foreground.
void viewLog(Window& window, const char* file);

}  // namespace Kiva
