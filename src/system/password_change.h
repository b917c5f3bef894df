// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Kiva {

// What makes a password change last once the authentication stack has made it. Nothing here undoes
// the change.

/// Puts the accounts into the host's configuration store, where the host keeps them there. False
/// when that failed, or when the host does not tell whether it does; the log says so then.
bool storeUserAccounts();

/// Saves the host's configuration, lets the management agent read it anew and records the change.
void completePasswordChange(const std::string& user);

}  // namespace Kiva
