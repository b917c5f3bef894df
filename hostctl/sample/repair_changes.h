// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostseam/network.h"
#include "sample/store.h"

namespace HostSample {

// The changes of host.json that repair a network: NICs that move, distributed switches, the network
// dumper. Each throws HostCtlException when the host as it is then does not allow it, with the file
// as it was, which is not written where nothing differs.

/// The NIC keeps its addresses; a port of a distributed switch that it leaves goes. One on an
/// opaque network is its owner's to move.
void moveNic(Store& store, const std::string& nic, const HostSeam::PortGroupName& portGroup);
/// How that owner moves it: to the port group of its present one's name, else the switch's first.
void moveOpaqueNic(Store& store, const std::string& nic, const std::string& switchName);

void moveNicToPort(Store& store, const std::string& nic,
                   const HostCtl::Network::HostLocalPort& port);
/// What ports say of their own uplinks stays, so that an adapter that comes back serves them again.
void addDistributedUplink(Store& store, const std::string& switchName, const std::string& pnic);
void removeDistributedUplink(Store& store, const std::string& switchName, const std::string& pnic);

void disableNetDumper(Store& store);

}  // namespace HostSample
