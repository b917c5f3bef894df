// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostseam/tool_host.h"

namespace HostLinux {

/// The machine's own ping, in a bounded time: status 0 when an echo came back, 1 when none did, 2
/// for everything else. `address` may carry a zone (fe80::1%eth0) and is never taken for an option.
HostSeam::ToolAnswer ping(const std::string& address, int count);

}  // namespace HostLinux
