// SPDX-License-Identifier: MIT
#pragma once

namespace HostCtl::Authentication {

/// Puts the user accounts, as they are now, into the host's configuration store, from where they
/// come back after a restart. Throws HostCtlException. Called after a password change on hosts
/// whose feature table asks for it.
void StoreUserAccountsToCs();

}  // namespace HostCtl::Authentication
