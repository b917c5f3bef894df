// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include "linux/files.h"
#include "linux/machines_service.h"

namespace HostLinux {

/// Whether libvirt has a machine that runs. False on a machine without libvirt or its daemon; a
/// daemon that does not do its work, or takes longer than `limit` to let us in or to count, is
/// logged and counts as true.
bool hasRunningMachines(const Files& files,
                        std::chrono::milliseconds limit = kMachinesAnswerWithin);

}  // namespace HostLinux
