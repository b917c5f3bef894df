// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostctl/network/address.h"
#include "linux/files.h"
#include "linux/network/mac_address.h"

namespace HostLinux {

// networkd 252 says good-bye to a DHCP server without naming it, which servers take for no good-bye
// at all, and its message is lost when the server's hardware address has to be asked for first. So
// the message is made and sent here, while the address still holds.

/// What networkd's state tells of an IPv4 lease, as far as giving it back needs that.
struct DhcpLease {
  HostCtl::Network::Ipv4Address address;
  HostCtl::Network::Ipv4Address server;
  std::vector<std::uint8_t> clientId;
  bool operator==(const DhcpLease&) const = default;
};

/// Nothing for a text that tells of no lease from a server.
std::optional<DhcpLease> parseLease(std::string_view state);

/// The message DHCPRELEASE, from the first byte behind the UDP header.
std::vector<std::uint8_t> releaseMessage(const DhcpLease& lease, const MacAddress& hardware,
                                         std::uint32_t transaction);

/// Sends it to the server and gives it half a second to leave. Whether it arrives nobody says.
/// Throws HostCtlException of `operation`.
void sendRelease(const Files& files, const std::string& operation, const std::string& interface,
                 const DhcpLease& lease, const MacAddress& hardware);

}  // namespace HostLinux
