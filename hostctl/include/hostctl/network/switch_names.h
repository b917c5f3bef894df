// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string_view>

namespace HostCtl::Network {

// What the pieces of a new standard switch may be called, on every kind of host: for the console's
// forms, and for the tool that makes them.

/// Leaves room for the name of a switch's bond in the 15 characters that an interface may have.
inline constexpr std::size_t kLongestSwitchName = 10;
inline constexpr std::size_t kLongestPortGroupName = 64;

/// Letters, digits, dots, underscores and hyphens, with neither a dot nor a hyphen in front. Not
/// what no interface can be called, nor the end that Kiva gives the devices of a switch.
inline bool isSwitchName(std::string_view name) {
  constexpr std::string_view kDigits = "0123456789";
  constexpr std::string_view kAllowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
  return !name.empty() && name.size() <= kLongestSwitchName && name.front() != '.' &&
         name.front() != '-' && name.find_first_not_of(kAllowed) == std::string_view::npos &&
         name.find_first_not_of(kDigits) != std::string_view::npos && name != "all" &&
         name != "default" && !name.ends_with("-bond") && !name.ends_with("-port");
}

/// Printable characters without a slash, without blanks at the ends, and neither "." nor "..",
/// which are places to whoever keeps switches in files.
inline bool isPortGroupName(std::string_view name) {
  const auto mayStand = [](char c) { return c >= ' ' && c <= '~' && c != '/'; };
  return !name.empty() && name.size() <= kLongestPortGroupName && name != "." && name != ".." &&
         name.front() != ' ' && name.back() != ' ' &&
         std::all_of(name.begin(), name.end(), mayStand);
}

}  // namespace HostCtl::Network
