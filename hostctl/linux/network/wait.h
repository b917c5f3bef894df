// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <thread>

namespace HostLinux {

/// How long a change waits for a link, an address or a route to be as it shall be.
inline constexpr std::chrono::seconds kInForceWithin{10};

/// Asks `condition` every 20 ms until it holds, at least once; false when it does not within
/// `limit`.
template <class Condition>
bool waitFor(std::chrono::milliseconds limit, Condition condition) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

}  // namespace HostLinux
