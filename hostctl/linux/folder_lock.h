// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/lib/descriptor.h"

namespace HostLinux {

/// The sole right to change what is in a folder, as long as the descriptor lives; for programs that
/// ask for it, such as the console and the tools. Waits up to five seconds for the one that has it.
/// Throws std::system_error, whose text names the folder.
HostCtl::Lib::Descriptor lockFolder(const std::string& folder);

}  // namespace HostLinux
