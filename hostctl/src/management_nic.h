// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "hostseam/driver.h"

namespace TarnCtl::Network {

/// Which of the host's kernel interfaces carries management traffic: the one that Kiva set up, else
/// the one with the default route, else the first with a global address, else none.
std::optional<HostSeam::KernelNic> chooseManagementNic(
    const std::vector<HostSeam::KernelNic>& nics);

}  // namespace TarnCtl::Network
