// SPDX-License-Identifier: MIT
#pragma once

#include "sample/store.h"

namespace HostSample {

// The network of a fresh host in host.json. What belongs to others stays: adapters, distributed
// switches, the host's name, and what its network offers.

/// Leaves no standard switch, and of the kernel NICs the management interface alone, on nothing and
/// without addresses. IPv6 is on from the next start of the host.
void clearNetwork(Store& store);
/// Forgets what there is, and makes vSwitch0 with the first adapter that has a link (the first of
/// all where none has one; those of distributed switches do not count), the port group "Management
/// Network" and tarn0 on it, with that adapter's MAC address and an IPv4 address by DHCP. Throws
/// HostCtlException with the file as it was when there is no adapter.
void autoConfigureNetwork(Store& store);

}  // namespace HostSample
