// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// Has the host write a core of its main management agent while that runs, on a thread that nobody
/// waits for, and raises an alert once it lies there. A thread that cannot be created is noted in
/// the log.
void startLiveCore();

}  // namespace Kiva
