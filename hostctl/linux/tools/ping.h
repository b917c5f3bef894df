// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostseam/tool_host.h"

namespace HostLinux {

/// The machine's own ping: status 0 when every echo came back within a bounded time.
HostSeam::ToolAnswer ping(const std::string& address, int count);

}  // namespace HostLinux
