// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "sample/store.h"

namespace HostSample {

/// The changes that the program makes to host.json, but those of the network. Each throws
/// HostCtlException when the host as it is then does not allow it; the check and the change are one
/// step for all users of the file.

/// Puts the JSON `text` in the place of everything but the rehearsals, which are no part of the
/// host's configuration.
void resetState(Store& store, const std::string& text);

void raiseAlert(Store& store, const std::string& text);

void setOption(Store& store, const std::string& path, const HostCtl::Adv::OptionValue& value);
void setFirewallRuleset(Store& store, const std::string& id, bool enabled);
/// The layout in force, and the one that the host starts with.
void loadKeyboardLayout(Store& store, const std::string& layout);
void setKeyboardLayout(Store& store, const std::string& layout);
/// Copies the accounts into the configuration store.
void storeAccounts(Store& store);
void setLockdown(Store& store, bool enabled);
/// Also ends the expiry of the account.
void changePassword(Store& store, const std::string& user, const std::string& password);

void setServiceRunning(Store& store, const std::string& name, bool running);
void setServiceEnabled(Store& store, const std::string& name, bool enabled);

void setPower(Store& store, Power power);
/// Has a host that went down up again; nothing for one that is up.
void startHost(Store& store);

/// Stops the running machines that have an autostart number, or all of them.
enum class Machines { Managed, All };
void stopMachines(Store& store, Machines which);

}  // namespace HostSample
