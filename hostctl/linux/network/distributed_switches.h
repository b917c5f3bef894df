// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostseam/network.h"
#include "linux/files.h"
#include "linux/network/ovs_model.h"

namespace HostLinux {

// The host's distributed switches: bridges of Open vSwitch that have a controller. Adapters go by
// their names of the console (pnic0). Changes throw HostCtlException with the host as it was.

std::vector<HostSeam::DistributedSwitchRecord> readDistributedSwitches(const Files& files);

/// Tells of the adapters that Open vSwitch has which bridge has them, controlled or not.
void nameOvsBridges(const Files& files, const OvsBridges& bridges,
                    std::vector<HostCtl::Network::PnicRecord>& pnics);

/// Puts an internal interface of Open vSwitch on a new port of its bridge, which replaces the old
/// one; addresses, routes and the hardware address stay. Refused are the bridge's own interface,
/// for which there is no other port, and one that ifupdown or NetworkManager would make anew.
void moveNicToPort(const Files& files, const std::string& nic,
                   const HostCtl::Network::HostLocalPort& port);

void addDistributedUplink(const Files& files, const std::string& switchName,
                          const std::string& pnic);
void removeDistributedUplink(const Files& files, const std::string& switchName,
                             const std::string& pnic);

}  // namespace HostLinux
