// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "hostctl/network/nic.h"
#include "network/pending_network.h"

namespace Kiva {

/// The management interface and its configuration as the network window opens on them.
struct ManagementNetwork {
  /// Null when the host has none; then nothing is pending but the kernel's IPv6.
  std::unique_ptr<HostCtl::Network::TarnNic> interface;
  PendingNetwork pending;
};

/// Reads the host. Nothing where a read fails, which is logged: the apply pass would take what
/// could not be read for what the operator wants. Uplinks and VLAN belong to a standard switch; on
/// any other there are no adapters and no VLAN.
std::optional<ManagementNetwork> readManagementNetwork();

}  // namespace Kiva
