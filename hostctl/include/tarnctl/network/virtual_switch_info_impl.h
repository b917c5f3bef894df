// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/network/network_info.h"

namespace TarnCtl::Network {

/// The standard switches of the host that the program runs on.
class VirtualSwitchInfoImpl : public HostCtl::Network::VirtualSwitchInfo {
 public:
  std::vector<std::unique_ptr<HostCtl::Network::VirtualSwitch>> GetVirtualSwitches() override;
};

/// The distributed ones.
class DistributedSwitchInfoImpl : public HostCtl::Network::DistributedSwitchInfo {
 public:
  std::vector<std::unique_ptr<HostCtl::Network::DistributedSwitch>> GetDistributedSwitches()
      override;
};

}  // namespace TarnCtl::Network
