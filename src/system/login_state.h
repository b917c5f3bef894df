// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Kiva {

/// Records who logged in, and whether that user's card is in a reader now.
void SetLoggedInUser(const std::string& user);

/// True when a smart card was found: the login then asks for its PIN.
bool HasSmartCardUserId();

/// True while the host lets operators log in at its console: a marker file that it keeps says so.
bool IsConsoleLoginShown();

}  // namespace Kiva
