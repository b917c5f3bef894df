// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// The bytes that the signal thread writes into the event pipe.
enum class EventByte : unsigned char { SmartCard = 1, StopRequest = 2, Resize = 3, Stop = 4 };

/// Blocks the six handled signals and starts the thread that turns each into a byte of the event
/// pipe. Called once, before any other thread exists. Ends the process with status 1 when it
/// cannot.
void startSignalThread();

/// The end of the event pipe that the key wait reads.
int eventPipe();

}  // namespace Kiva
