// SPDX-License-Identifier: MIT
#include "network/management_interface.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/network/network_info_impl.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnecteeType;

std::unique_ptr<HostCtl::Network::TarnNic> findManagementInterface() {
  try {
    TarnCtl::Network::NetworkInfoImpl network;
    network.UpdateManagementInterface();
    return network.GetManagementInterface();
  } catch (const HostCtlException&) {
    return nullptr;
  }
}

bool isOnDistributedSwitch() {
  const auto interface = findManagementInterface();
  if (!interface) {
    logError("Could not locate the management interface");
    return false;
  }
  try {
    return interface->GetConnectionPoint().type == ConnecteeType::DistributedPort;
  } catch (const HostCtlException& e) {
    logError("Could not determine if a DVS was in use: %s", e.what());
    return false;
  }
}

}  // namespace Kiva
