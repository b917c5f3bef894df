// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "sample/store.h"

namespace HostSample {

/// Every change that the program makes to host.json. Each throws HostCtlException when the host as
/// it is then does not allow it; the check and the change are one step for all users of the file.

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

void addSwitch(Store& store, const std::string& name);
void addUplink(Store& store, const std::string& pnic, const std::string& switchName);
void removeUplink(Store& store, const std::string& pnic, const std::string& switchName);
void addPortGroup(Store& store, const std::string& name, const std::string& switchName);
void moveKernelNic(Store& store, const std::string& name, const std::string& switchName);

void setServiceRunning(Store& store, const std::string& name, bool running);
void setServiceEnabled(Store& store, const std::string& name, bool enabled);

void setPower(Store& store, Power power);

/// Stops the running machines that have an autostart number, or all of them.
enum class Machines { Managed, All };
void stopMachines(Store& store, Machines which);

}  // namespace HostSample
