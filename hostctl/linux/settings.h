// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostctl/adv/advanced_option.h"
#include "hostctl/system/feature_list.h"
#include "hostctl/system/records.h"
#include "linux/files.h"

namespace HostLinux {

/// The host's own settings, small files that an administrator can read and edit:
///
///   /etc/corvo/welcome          the welcome message, as it stands
///   /etc/corvo/boot-option      a decimal number; 0 when missing
///   /etc/corvo/options/PATH     one advanced option a file, for example
///                               /etc/corvo/options/UserVars/KivaTimeOut
///   /etc/corvo/firewall/NAME    one ruleset a file: 1 when it is enabled, else 0
///   /etc/corvo/features/NAME    1 when the feature is switched on, else 0
///   /run/corvo/alert            the system alert, one line
///
/// An option file holds one value, white space around it not counted: a decimal number with an
/// optional minus sign is an integer option, everything else a string option. A string that looks
/// like a number, or begins or ends with blanks, stands in double quotes.

HostCtl::Adv::OptionValue parseOption(std::string_view text);

/// The file of an option, or nothing for a path whose components are not plain names of letters,
/// digits, ".", "_" and "-": no option path leads out of the folder.
std::optional<std::string> optionFile(std::string_view path);

std::optional<HostCtl::Adv::OptionValue> readOption(const Files& files, std::string_view path);
std::string readWelcomeMessage(const Files& files);
int readBootOption(const Files& files);
std::vector<HostCtl::System::FirewallRuleset> readFirewallRulesets(const Files& files);
bool readFeature(const Files& files, HostCtl::System::Feature feature);

/// Throw HostCtlException with the file as it was.
void writeOption(const Files& files, const std::string& path,
                 const HostCtl::Adv::OptionValue& value);
void writeFirewallRuleset(const Files& files, const std::string& id, bool enabled);

/// Leaves the alert in its file and in the system log; a host that keeps no file (an ordinary
/// user's) still has its line there. For any thread.
void raiseAlert(const Files& files, const std::string& text);

}  // namespace HostLinux
