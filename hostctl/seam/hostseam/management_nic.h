// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "hostseam/network.h"

namespace HostSeam {

/// Which of the host's kernel interfaces carries management traffic: the one that Kiva set up, else
/// the one with the default route, else the first with a global address, else none.
std::optional<KernelNic> chooseManagementNic(const std::vector<KernelNic>& nics);

}  // namespace HostSeam
