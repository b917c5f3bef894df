// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>

namespace HostSample {

/// Leaves a process behind that sends SIGTERM to `process` when `delay` is over, if it still runs
/// then; a process that has taken over its number is safe. What is left behind belongs to no
/// session of ours and holds none of our descriptors, so that nobody waits for it.
void stopLater(pid_t process, std::chrono::milliseconds delay);

}  // namespace HostSample
