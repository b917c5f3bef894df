// SPDX-License-Identifier: MIT
#pragma once

#include <stop_token>
#include <string>

namespace Kiva {

// A resolution that asks the DNS servers although the hosts file knows the name: the file loses the
// name's entry meanwhile, and a backup beside it, complete from its first moment to its last, says
// that the file is to be put back. Whoever works on the two holds a lock on their folder, which
// goes with its process. Failures are logged here.

/// Puts the hosts file back where a test was cut off by a kill or a power cut. Called at start-up;
/// leaves alone what another console is testing at this moment.
void repairHostsFile();

/// Whether name resolution without the hosts file's own entry finds an address for `name`. Blocks
/// as long as that takes, and first for as long as another resolution has the file; ends before it
/// touches anything when it was abandoned meanwhile. For any thread.
bool resolveByServers(const std::string& name, const std::stop_token& abandoned);

}  // namespace Kiva
