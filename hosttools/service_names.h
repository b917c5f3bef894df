// SPDX-License-Identifier: MIT
#pragma once

namespace HostTools {

/// The host's services and firewall rulesets by the names that every kind of host knows them by.
inline constexpr const char* kHaloShell = "HaloShell";
inline constexpr const char* kSsh = "SSH";
inline constexpr const char* kOvlAgent = "ovl-opsagent";
inline constexpr const char* kSshRuleset = "sshServer";

}  // namespace HostTools
