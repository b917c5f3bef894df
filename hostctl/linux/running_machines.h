// SPDX-License-Identifier: MIT
#pragma once

#include "linux/files.h"

namespace HostLinux {

/// Whether libvirt has a machine that runs. False on a machine without libvirt or its daemon; a
/// daemon that does not answer within ten seconds is logged and counts as true.
bool hasRunningMachines(const Files& files);

}  // namespace HostLinux
