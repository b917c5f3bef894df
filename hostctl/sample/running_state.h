// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "hostseam/network.h"
#include "sample/ip_state.h"

namespace HostSample {

// The part `network` of host.json for those who change it: what runs there, and what follows when
// an interface runs with something else. `nic` is one of its kernelNics.

/// The interface that the host's gateways and leased name servers go with: the one marked
/// "management", else "defaultRoute", else the first. Null for a host without interfaces.
Json* managementNic(Json& network);

/// `which` is "configured" or "running".
HostCtl::Network::IpConfig configOf(const Json& nic, const char* which);
Offers offersOf(const Json& nic);

HostSeam::RoutingRecord routingOf(const Json& network);
void writeRouting(Json& network, const HostSeam::RoutingRecord& routing);
void writeNameServers(Json& network, const std::vector<HostCtl::Network::IpAddress>& servers);

/// The interface runs with `after` from now on. Leases bring name servers where they are wanted;
/// without any lease the last ones stay.
void run(Json& network, Json& nic, HostCtl::Network::IpConfig after);

/// The interface comes up with what is configured and offered.
void comeUp(Json& network, Json& nic);

}  // namespace HostSample
