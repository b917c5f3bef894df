// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hostseam/tool_host.h"

namespace HostLinux {

/// Whether `text` is an address, an IPv6 one perhaps with a zone (fe80::1%eth0), or could be a
/// host's name; so it is never an option of a program.
bool isAddressOrName(std::string_view text);

/// The machine's own ping, in a bounded time: status 0 when an echo came back, 1 when none did, 2
/// for everything else. `count` is between 1 and 20.
HostSeam::ToolAnswer ping(const std::string& address, int count);

}  // namespace HostLinux
