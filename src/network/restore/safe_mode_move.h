// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "hostctl/network/nic.h"
#include "network/restore/safe_mode_plan.h"

namespace Kiva {

/// What a plan is made of, for the management interface `nic`. Throws HostCtlException for one on
/// no switch that the console could take it from, for one without an uplink, and when the host
/// fails.
SafeMode::Before readBefore(const HostCtl::Network::TarnNic& nic);

/// Carries the steps of a plan out, each logged, and shown with `show`. When one fails, what was
/// done is undone in the opposite order; `trouble`, which is logged, then names the step and its
/// cause, and the result is false.
bool moveManagementNetwork(HostCtl::Network::TarnNic& nic, const SafeMode::Plan& plan,
                           const std::function<void(const std::string&)>& show,
                           std::string& trouble);

}  // namespace Kiva
