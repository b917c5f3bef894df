// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

namespace Harness {

/// The process that has the keyboard of the terminal that session leader `leader` runs on: `leader`
/// itself, or for instance the pager that it has started.
pid_t foregroundOf(pid_t leader);

/// Whether the main thread of `pid` sleeps until its terminal gives it something to read. The short
/// wait in which curses looks whether an Escape begins a longer sequence does not count. Asked of
/// the kernel, so that no test has to guess a time.
bool waitsForKeys(pid_t pid);

/// How often the main thread of `pid` has gone to sleep. Grows whenever it takes in a key.
long sleepsOf(pid_t pid);

}  // namespace Harness
