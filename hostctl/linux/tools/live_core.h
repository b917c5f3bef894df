// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "hostseam/tool_host.h"

namespace HostLinux {

/// What a core may cost at most, besides half of the free space of its disk.
struct LiveCoreLimits {
  std::uintmax_t bytes = std::uintmax_t{2} << 30;
  std::chrono::milliseconds time{60'000};
};

/// Writes a core of the running process with the debugger, as OUTPUT.core, for root only; the
/// file's path. Where several processes have the name it is the one with the lowest number, which
/// started the others. The process stands still meanwhile and goes on afterwards, also when its
/// core fails. Throws HostCtlException, with no half-written file left.
std::string writeLiveCore(const HostSeam::LiveCore& core, const LiveCoreLimits& limits = {});

}  // namespace HostLinux
