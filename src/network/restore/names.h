// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Kiva {

// What the pieces of a standard switch may be called, wherever the console makes one.

/// Letters, digits, dots, underscores and hyphens, 32 at most.
bool isSwitchName(std::string_view name);
/// Printable characters, 64 at most, without a slash and without blanks at the ends.
bool isPortGroupName(std::string_view name);

/// The first of `prefix` with 0, 1, 2, ... behind it that is not taken.
std::string firstFreeName(const std::string& prefix, const std::vector<std::string>& taken);

}  // namespace Kiva
