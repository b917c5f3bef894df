// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/network/address.h"
#include "sample/json_node.h"

namespace HostSample {

// Addresses that host.json writes as texts. Each throws KeyError.

HostCtl::Network::Ipv4Address readIpv4(const JsonNode& node);
HostCtl::Network::Ipv6Address readIpv6(const JsonNode& node);
HostCtl::Network::IpAddress readIpAddress(const JsonNode& node);

}  // namespace HostSample
