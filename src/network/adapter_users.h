// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "network/adapter_list.h"

namespace Kiva {

/// A switch that has adapters among its uplinks, which of those that were asked for, and those of
/// its port groups that send through them.
struct AdapterUser {
  std::string switchName;
  std::vector<std::string> pnics;
  std::vector<std::string> portGroups;
  bool operator==(const AdapterUser&) const = default;
};

/// Who uses any of these adapters: the standard and the distributed switches whose uplinks name it,
/// and the switch of another kind that has it. Nothing, which is logged, where the host does not
/// tell.
std::optional<std::vector<AdapterUser>> findAdapterUsers(const Pnics& pnics);

}  // namespace Kiva
