// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostctl/network/ip_config.h"

namespace Kiva {

/// The management network's settings as the menu shows them beside its entry, a label on one row
/// and its value on the next, in at most 13 rows of `columns`.
std::string networkSummary(int columns);

/// The same from given facts.
std::string networkSummaryText(const std::string& hostname,
                               const HostCtl::Network::IpConfig& config,
                               const std::vector<HostCtl::Network::IpAddress>& nameServers,
                               int columns);

}  // namespace Kiva
