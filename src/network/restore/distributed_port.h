// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "hostctl/network/nic.h"
#include "network/restore/host_local_port.h"

namespace Kiva {

/// What an interface on a distributed switch hangs on. Its own port is one without a name where the
/// switch does not know of it.
struct DistributedAttachment {
  std::unique_ptr<HostCtl::Network::DistributedSwitch> on;
  HostCtl::Network::DistributedPort port;
  /// Of all distributed switches: what a new port may not be called.
  Ports allPorts;
};

/// Throws HostCtlException for an interface on no distributed switch, and when the host fails.
DistributedAttachment distributedAttachmentOf(const HostCtl::Network::TarnNic& nic);

/// The switch of that name; throws HostCtlException where there is none.
std::unique_ptr<HostCtl::Network::DistributedSwitch> findDistributedSwitch(const std::string& name);

}  // namespace Kiva
