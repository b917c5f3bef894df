// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "linux/files.h"

namespace HostLinux {

/// Root-only; archives are called configuration-VERSION-DATE.tar, with versions that only grow.
inline constexpr const char* kSavedConfigurations = "/var/lib/corvo/backup";

/// Writes an archive of the host's configuration (/etc/corvo, the network files, the accounts'
/// hashes) and keeps the last ten; its path. An archive begins with a file VERSION, then comes
/// `accounts` (lines of /etc/shadow), then what lies below /etc. Throws HostCtlException; a
/// half-written archive is never there under an archive's name.
std::string saveConfiguration(const Files& files);

/// Saves the configuration and has the next start of the host begin with what it was delivered
/// with: the shipped /etc/corvo and the automatic network configuration. Throws HostCtlException.
void resetConfiguration(const Files& files);

/// Called at every start of the host, before the network and the console: does what was put off to
/// this start, and tells whether there was anything. The shipped files take the place of /etc/corvo
/// in one step, and the note of the reset goes last: wherever the power is cut, the next start
/// begins again, and nobody has seen a mixture. Network files that are not Kiva's stay. Throws
/// std::system_error, with the note in place.
bool applyReset(const Files& files);

}  // namespace HostLinux
