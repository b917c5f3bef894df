// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "linux/files.h"

namespace HostLinux {

/// Where the configuration store keeps the accounts, readable by root only.
inline constexpr const char* kStoredAccounts = "/var/lib/corvo/accounts";

/// The accounts of this machine that have a password, as lines of /etc/shadow. Throws
/// HostCtlException.
std::string readAccounts(const Files& files);

/// Puts them into the configuration store. Throws HostCtlException.
void storeAccounts(const Files& files);

}  // namespace HostLinux
