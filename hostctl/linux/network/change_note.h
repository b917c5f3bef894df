// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <vector>

#include "linux/network/switch_model.h"
#include "linux/network_tables.h"

namespace HostLinux {

/// What a change takes from the switches: the devices that it deletes, the uplinks that it gives
/// back. A SwitchEditor notes it with the lock, for the next one, should it be killed.
struct Losses {
  std::set<std::string> devices;
  std::vector<SwitchUplink> uplinks;
};

/// Never empty, so that it also tells that a change had begun. Each link stands there with its
/// number as well, because another one may have its name later.
std::string noteOf(const Losses& losses, const std::vector<LinkRow>& links);

/// What of a note is still to be taken where the machine has `links` and its files make `switches`.
/// An uplink that hangs on another link than one of Kiva's is somebody else's by now.
Losses leftOf(const std::string& note, const std::vector<LinkRow>& links, Switches switches);

}  // namespace HostLinux
