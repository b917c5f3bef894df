// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace Kiva {

/// The first of `prefix` with 0, 1, 2, ... behind it that is not taken.
std::string firstFreeName(const std::string& prefix, const std::vector<std::string>& taken);

}  // namespace Kiva
