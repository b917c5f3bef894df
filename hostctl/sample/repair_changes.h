// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostseam/network.h"
#include "sample/store.h"

namespace HostSample {

// The changes of host.json that repair a network: NICs that move, distributed switches, and the
// network of a fresh host. Each throws HostCtlException when the host as it is then does not allow
// it, with the file as it was.

void moveNic(Store& store, const std::string& nic, const HostSeam::PortGroupName& portGroup);
void moveNicToPort(Store& store, const std::string& nic,
                   const HostCtl::Network::HostLocalPort& port);
void addDistributedUplink(Store& store, const std::string& switchName, const std::string& pnic);
void removeDistributedUplink(Store& store, const std::string& switchName, const std::string& pnic);

void disableNetDumper(Store& store);
/// Leaves adapters, and kernel NICs without any connection or address.
void clearNetwork(Store& store);
/// The network of the sample that the program was delivered with.
void autoConfigureNetwork(Store& store);

}  // namespace HostSample
