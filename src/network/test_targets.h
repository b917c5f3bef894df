// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

#include "hostctl/network/address.h"

namespace Kiva {

/// What the network test is to try. A field that is empty is left out.
struct TestTargets {
  std::array<std::string, 3> addresses;
  std::string hostname;
  bool operator==(const TestTargets&) const = default;
};

/// What of the host the form offers. Empty addresses and texts are what the host does not have, or
/// did not tell.
struct TestFacts {
  HostCtl::Network::Ipv4Address ipv4Gateway;
  HostCtl::Network::Ipv6Address ipv6Gateway;
  std::vector<HostCtl::Network::IpAddress> nameServers;
  /// In the kernel as it runs.
  bool ipv6Enabled = false;
  std::string hostname;
  std::string domain;
};

/// Asks the host; a fact that it fails to tell is logged and stays empty, because a test is for
/// broken networks.
TestFacts readTestFacts();

/// The gateways, then the name servers, as far as there are fields; IPv6 ones, without their zones,
/// only where the kernel has IPv6. The host's full name.
TestTargets preparedTargets(const TestFacts& facts);

/// Whether a key may stand in the field of an address, or of a name.
bool isAddressKey(int key);
bool isNameKey(int key);

/// An address with the zone that a link-local one needs: "fe80::1%tarn0". Safe in a shell's line
/// whatever the interface is called. An empty interface name gives no zone.
std::string withZone(const std::string& address, const std::string& interfaceName);

}  // namespace Kiva
