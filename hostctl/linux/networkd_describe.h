// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "linux/networkd_report.h"

namespace HostLinux {

/// The addresses in networkd's description of all links (a JSON text), of those sources only that
/// say who gave an address: DHCPv4, DHCPv6, NDisc and static. What is not understood is passed
/// over; a text that is no JSON object gives no addresses.
std::vector<ReportedAddress> addressesIn(const std::string& description);

}  // namespace HostLinux
