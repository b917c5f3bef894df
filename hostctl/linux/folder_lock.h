// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

#include "hostctl/lib/descriptor.h"

namespace HostLinux {

// The sole right to something, as long as the descriptor lives; for programs that ask for it, such
// as the console and the tools. Each waits `turnWithin` for the one that has it, and throws
// std::system_error, whose text names the path; EWOULDBLOCK when it did not get its turn. Whoever
// may open what is locked can keep it locked, so that must be nobody but root.

/// To change what is in a folder.
HostCtl::Lib::Descriptor lockFolder(const std::string& folder,
                                    std::chrono::milliseconds turnWithin = std::chrono::seconds(5));
/// To what a file of its own stands for, which is made, for its owner alone.
HostCtl::Lib::Descriptor lockFile(const std::string& path, std::chrono::milliseconds turnWithin);

/// Makes a folder, and those above it where they are missing, that its owner alone can enter.
void makeOwnersFolder(const std::string& folder);

}  // namespace HostLinux
