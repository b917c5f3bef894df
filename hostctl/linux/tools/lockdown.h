// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "linux/files.h"

namespace HostLinux {

/// Lockdown of this machine: remote logins are refused for all but the accounts listed in
/// /etc/corvo/lockdown-exceptions, logins at the console stay. It consists of
///
///   /var/lib/corvo/lockdown                 the accounts that may still log in, one a line
///   /etc/pam.d/SERVICE                      one line at the top of every service of remote logins
///                                           that is there: only accounts of that list; all are
///                                           refused when the list is gone
///   /etc/ssh/sshd_config.d/lockdown.conf    the same for the SSH server, where one is installed
///
/// and of nothing else, so it holds across restarts, and leaving it leaves no trace. The exceptions
/// are taken when lockdown is entered; entering it again takes them anew. Sessions that run stay.

/// Whether all of that is there, for every way of remote login that the machine has now: a half
/// lockdown is none. Entering or leaving completes either way. Throws HostCtlException where only
/// root may look.
bool isLockdownEnabled(const Files& files);

/// Whether the caller may write where it has to, and the SSH server, where there is one, reads the
/// folder of its part.
bool isLockdownPossible(const Files& files);

/// Throws HostCtlException, with lockdown left again when entering it failed.
void setLockdown(const Files& files, bool enabled);

/// The accounts that a file of exceptions names, one a line, comments after "#". What is no plain
/// account name is left out.
std::vector<std::string> parseLockdownExceptions(std::string_view text);

}  // namespace HostLinux
