// SPDX-License-Identifier: MIT
#pragma once

#include "network/pending_network.h"

namespace Kiva {

/// What a confirmed dialog of the network window chose becomes pending, and sets `changed` where it
/// differs from what was pending before. What was confirmed as it was overwrites nothing.

void chooseAdapters(PendingNetwork& pending, const std::vector<std::string>& adapters);
void chooseVlanId(PendingNetwork& pending, std::int16_t vlanId);
/// `chosen` is the pending configuration as a dialog changed it, here and below. Address, mask and
/// gateway count only where the address is static.
void chooseIpv4(PendingNetwork& pending, const HostCtl::Network::IpConfig& chosen);
/// Whether the host has IPv6 at all counts only against its state at the start, and so sets
/// nothing.
void chooseIpv6(PendingNetwork& pending, const HostCtl::Network::IpConfig& chosen, bool enabled);

/// Name resolution as an operator chose it; under DHCP the rest means nothing.
struct ChosenDns {
  bool fromDhcp = false;
  /// Whether the operator marked that, or it was so when the dialog opened.
  bool marked = false;
  std::optional<HostCtl::Network::IpAddress> primary, alternate;
  std::string hostname;
};
void chooseDns(PendingNetwork& pending, const ChosenDns& chosen);
void chooseSuffixes(PendingNetwork& pending, const std::string& suffixes);

/// Whether leaving the window has something to apply.
bool hasChanges(const PendingNetwork& pending);
bool isIpv6Toggled(const PendingNetwork& pending);

/// Whether a DHCP server gives the interface its addresses, and so may name servers too: DHCPv6's
/// counts where there is no IPv4.
bool asksDhcp(const PendingNetwork& pending);
/// Whether somebody else gives the interface its IPv6 addresses.
bool isIpv6Dynamic(const HostCtl::Network::IpConfig& config);

}  // namespace Kiva
