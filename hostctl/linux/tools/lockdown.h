// SPDX-License-Identifier: MIT
#pragma once

#include "linux/files.h"

namespace HostLinux {

/// Lockdown of this machine: remote logins are refused for all but the accounts listed in
/// /etc/corvo/lockdown-exceptions, logins at the console stay. Entered through PAM and the SSH
/// server's own configuration, left without a trace, kept across restarts. Throws HostCtlException.
bool isLockdownEnabled(const Files& files);
bool isLockdownPossible(const Files& files);
void setLockdown(const Files& files, bool enabled);

}  // namespace HostLinux
