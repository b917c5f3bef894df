// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostseam/tool_host.h"

namespace HostLinux {

/// Writes a core of the running process, which goes on running, bounded in size and time; the
/// file's path. Throws HostCtlException, with no half-written file left.
std::string writeLiveCore(const HostSeam::LiveCore& core);

}  // namespace HostLinux
