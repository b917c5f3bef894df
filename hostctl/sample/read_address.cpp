// SPDX-License-Identifier: MIT
#include "sample/read_address.h"

namespace HostSample {

using namespace HostCtl::Network;

Ipv4Address readIpv4(const JsonNode& node) {
  if (const auto address = Ipv4Address::FromString(node.Text())) return *address;
  node.Refuse("an IPv4 address");
}

Ipv6Address readIpv6(const JsonNode& node) {
  if (const auto address = Ipv6Address::FromString(node.Text())) return *address;
  node.Refuse("an IPv6 address");
}

IpAddress readIpAddress(const JsonNode& node) {
  if (const auto address = parseIpAddress(node.Text())) return *address;
  node.Refuse("an IP address");
}

}  // namespace HostSample
