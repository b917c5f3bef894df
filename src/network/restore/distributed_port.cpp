// SPDX-License-Identifier: MIT
#include "network/restore/distributed_port.h"

#include <algorithm>
#include <iterator>

#include "hostctl/lib/exception.h"
#include "network/take_named.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnecteeType;
using HostCtl::Network::DistributedPort;
using HostCtl::Network::DistributedSwitch;
using HostCtl::Network::TarnNic;

namespace {

using Switches = std::vector<std::unique_ptr<DistributedSwitch>>;

constexpr const char* kKind = "Distributed switch";

Switches readSwitches() {
  return TarnCtl::Network::DistributedSwitchInfoImpl().GetDistributedSwitches();
}

DistributedPort portOf(const DistributedSwitch& on, const std::string& nic) {
  for (DistributedPort& port : on.GetPorts())
    if (port.nic == nic) return std::move(port);
  return {};
}

}  // namespace

DistributedAttachment distributedAttachmentOf(const TarnNic& nic) {
  const auto at = nic.GetConnectionPoint();
  const std::string name = nic.GetInterfaceName();
  if (at.type != ConnecteeType::DistributedPort)
    throw HostCtlException(name + " is on no distributed switch");
  Switches switches = readSwitches();
  DistributedAttachment found;
  for (const auto& one : switches)
    std::ranges::move(one->GetPorts(), std::back_inserter(found.allPorts));
  found.on = takeNamed(switches, kKind, at.switchName);
  found.port = portOf(*found.on, name);
  return found;
}

std::unique_ptr<DistributedSwitch> findDistributedSwitch(const std::string& name) {
  Switches switches = readSwitches();
  return takeNamed(switches, kKind, name);
}

}  // namespace Kiva
