// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "linux/files.h"

namespace HostLinux {

/// The kernel's names of the physical NICs that this program knows to have been on the machine
/// since its start, in the order in which they are numbered: `present`, in its own order, behind
/// those before. The programs of a machine agree on it through /run/kiva-adapters, so that a number
/// means the same adapter in the console and in the tools that it starts; one that may not write
/// that file, or not at that moment, numbers what is new for itself until it can. For any thread.
std::vector<std::string> numberedAdapters(const Files& files,
                                          const std::vector<std::string>& present);

}  // namespace HostLinux
