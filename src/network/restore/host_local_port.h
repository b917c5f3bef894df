// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostctl/network/distributed_switch.h"

namespace Kiva {

// Ports of distributed switches that a console made on its own host. Their names alone tell them
// from the ports that the switch's controller made.

using Ports = std::vector<HostCtl::Network::DistributedPort>;

bool isHostLocalPort(const std::string& name);

/// A name for another one, where these ports have theirs.
std::string freeHostLocalPort(const Ports& ports);

/// The switch's uplinks that host-local ports of it use, the one of the interface `nic` left out.
std::vector<std::string> uplinksOfOthers(const Ports& ports,
                                         const std::vector<std::string>& uplinks,
                                         const std::string& nic);

}  // namespace Kiva
