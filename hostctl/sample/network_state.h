// SPDX-License-Identifier: MIT
#pragma once

#include "sample/host_state.h"
#include "sample/json_node.h"

namespace HostSample {

/// The `network` part of host.json. Which switch a physical adapter belongs to follows from the
/// switches' uplinks; the file does not say it twice. Keys that may be left out:
///
///   ipv6EnabledAtStart                    ipv6Enabled from the next start of the host on
///   kernelNics[].up                       false for an interface that was taken down
///   kernelNics[].macAddress               the address that the interface uses
///   kernelNics[].offers                   what its network gives it; see Offers
///   switches[].portGroups[].activeUplinks its teaming policy, the primary first; without it the
///                                         switch's uplinks
///
/// A kernel without IPv6 has no addresses of it, and an interface that is down none at all,
/// whatever the file says.
void readNetworkState(const JsonNode& network, HostState& state);

}  // namespace HostSample
