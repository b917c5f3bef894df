// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// Has the host write a core of its main management agent while that runs, and raises an alert once
/// it lies there. Blocks; safe on any thread.
void collectLiveCore() noexcept;

/// Begins collectLiveCore on a thread that nobody waits for. A thread that cannot be created is
/// noted in the log.
void startLiveCore();

}  // namespace Kiva
