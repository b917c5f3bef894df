// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "linux/files.h"

namespace HostLinux {

/// Writes an archive of the host's configuration (/etc/corvo, the network files, the accounts'
/// hashes) into a folder that only root can read, and keeps the last ten; its path. Throws
/// HostCtlException; a half-written archive is never there under an archive's name.
std::string saveConfiguration(const Files& files);

/// Saves the configuration and has the next start of the host begin with what it was delivered
/// with: the shipped /etc/corvo and the automatic network configuration. Throws HostCtlException.
void resetConfiguration(const Files& files);

}  // namespace HostLinux
