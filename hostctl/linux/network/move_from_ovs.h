// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostseam/network.h"
#include "linux/files.h"

namespace HostLinux {

/// Whether the interface is on a distributed switch; where Open vSwitch does not say, the kernel is
/// asked whether it is Open vSwitch's at all.
bool isOnDistributedSwitch(const Files& files, const std::string& nic);

/// Moves an internal interface of Open vSwitch to a port group of a standard switch: its port goes,
/// and an interface of ours takes its name, hardware address, addresses and routes. Whoever
/// configures interfaces other than through networkd is left alone: that is refused. Throws
/// HostCtlException with the host as it was.
void moveNicFromOvs(const Files& files, const std::string& nic,
                    const HostSeam::PortGroupName& group);

}  // namespace HostLinux
