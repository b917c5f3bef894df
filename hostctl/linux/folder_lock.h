// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

#include "hostctl/lib/descriptor.h"

namespace HostLinux {

/// The sole right to change what is in a folder, as long as the descriptor lives; for programs that
/// ask for it, such as the console and the tools. Waits that long for the one that has it. Throws
/// std::system_error, whose text names the folder; EWOULDBLOCK when it did not get its turn.
HostCtl::Lib::Descriptor lockFolder(const std::string& folder,
                                    std::chrono::milliseconds turnWithin = std::chrono::seconds(5));

}  // namespace HostLinux
