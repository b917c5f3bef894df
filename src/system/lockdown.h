// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

// Lockdown mode keeps users from logging into the host directly; its management remains. The
// management agent knows and changes it.

/// Whether the host is in lockdown mode, and whether it can be; false when the agent does not
/// answer.
bool isLockdownEnabled();
bool isLockdownPossible();

enum class Lockdown { Off, On };

/// Switches the mode as the service user; the log says how it went. True when the agent did it.
bool switchLockdown(Lockdown wanted);

}  // namespace Kiva
