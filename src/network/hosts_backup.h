// SPDX-License-Identifier: MIT
#pragma once

#include <stop_token>
#include <string>

namespace Kiva {

// A resolution that asks the DNS servers although the hosts file knows the name: the file loses the
// name's entry meanwhile, and a backup beside it, complete from its first moment to its last, says
// that the file is to be put back. It is a hard link to a mark, which tells it from a backup that
// somebody else keeps under that name: of that one hands are kept off. Whoever works on them holds
// the lock on a file of its own, which goes with its process. Failures are logged here.

/// Puts the hosts file back, byte for byte, where a test was cut off by a kill or a power cut; what
/// others changed in it during that test is lost. Called at start-up; leaves alone, and logs, what
/// another console is testing at this moment.
void repairHostsFile();

/// Whether name resolution without the hosts file's own entry finds an address for `name`. Blocks
/// as long as that takes, and first for as long as another resolution has the file; ends before it
/// touches anything when it was abandoned meanwhile. One that is abandoned later has the file put
/// back by whoever abandons it. What others change in the file during the resolution stays, and is
/// logged. For any thread.
bool resolveByServers(const std::string& name, const std::stop_token& abandoned);

}  // namespace Kiva
