// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hostctl/network/nic.h"

namespace Kiva {

/// A switch that has an adapter among its uplinks, and those of its port groups that send through
/// it.
struct AdapterUser {
  std::string switchName;
  std::vector<std::string> portGroups;
  bool operator==(const AdapterUser&) const = default;
};

/// Who uses an adapter: the standard switches whose uplinks name it, and the switch of another kind
/// that has it. Nothing, which is logged, where the host does not tell.
std::optional<std::vector<AdapterUser>> findAdapterUsers(const HostCtl::Network::PnicRecord& pnic);

}  // namespace Kiva
