// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hostctl/network/nic.h"

namespace Kiva {

// The way of windows and dialogs to the interface that carries management traffic. A host that
// fails an operation is logged here; callers see no host-control exception.

/// The management interface as it is now, or null when the host has none or cannot say.
std::unique_ptr<HostCtl::Network::TarnNic> findManagementInterface();

/// True when the management interface is a port of a distributed switch, which the console does not
/// configure.
bool isOnDistributedSwitch();

}  // namespace Kiva
