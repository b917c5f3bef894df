// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hostctl/network/ip_config.h"

namespace Kiva {

/// What the operator has chosen in the network window and the host does not have yet. It begins as
/// the host's own configuration; dialogs change it, and the apply pass brings it to the host.
struct PendingNetwork {
  /// Uplinks of the management port group, the primary one first.
  std::vector<std::string> adapters;
  /// 0 for none.
  std::int16_t vlanId = 0;
  HostCtl::Network::IpConfig ipConfig;
  std::string hostname;
  /// Absent: not set.
  std::optional<HostCtl::Network::IpAddress> primaryDns;
  std::optional<HostCtl::Network::IpAddress> alternateDns;
  /// As typed, separated by blanks or commas.
  std::string suffixes;
  bool ipv6Enabled = false;
  /// The kernel's state when the window opened.
  bool ipv6EnabledAtStart = false;
  /// An IPv6 default gateway was entered, or the one that there was taken away.
  bool ipv6GatewaySet = false;
  /// Some dialog changed something.
  bool changed = false;
};

}  // namespace Kiva
