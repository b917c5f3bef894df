// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "hostctl/network/nic.h"
#include "network/pending_network.h"
#include "ui/frame.h"

namespace Kiva {

/// Brings the pending network to the host in one pass over `interface`, the management interface.
/// A step that the host fails is logged and shown over `owner`, and the pass goes on; nothing is
/// undone. `repaint` is called once the interface has another IPv4 address. Afterwards `pending`
/// says truly whether name servers come from DHCP. Keys typed meanwhile are dropped by whatever
/// frame is in front next. Always true.
bool applyChanges(Frame& owner, HostCtl::Network::TarnNic& interface, PendingNetwork& pending,
                  const std::function<void()>& repaint);

}  // namespace Kiva
