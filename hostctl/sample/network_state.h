// SPDX-License-Identifier: MIT
#pragma once

#include "sample/host_state.h"
#include "sample/json_node.h"

namespace HostSample {

/// The `network` part of host.json. Which switch a physical adapter belongs to follows from the
/// switches' uplinks; the file does not say it twice. Keys that may be left out:
///
///   ipv6EnabledAtStart                    ipv6Enabled from the next start of the host on
///   netDumper                             true while the host dumps over the network
///   distributedSwitches                   name, uplinks and ports of each
///   kernelNics[].up                       false for an interface that was taken down
///   kernelNics[].macAddress               the address that the interface uses
///   kernelNics[].offers                   what its network gives it; see Offers
///   switches[].portGroups[].activeUplinks its teaming policy, the primary first; without it the
///                                         switch's uplinks
///   distributedSwitches[].thirdParty      true for one that somebody else's software manages
///   distributedSwitches[].ports[].nic     the kernel interface on the port, whose connection says
///                                         the same
///   distributedSwitches[].ports[].vlanId  0 for none
///   distributedSwitches[].ports[].blocked true for one that lets nothing through
///   distributedSwitches[].ports[].uplinks those that it uses; without it the switch's
///
/// A kernel without IPv6 has no addresses of it, and an interface that is down none at all,
/// whatever the file says.
void readNetworkState(const JsonNode& network, HostState& state);

}  // namespace HostSample
