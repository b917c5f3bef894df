// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "linux/files.h"

namespace HostLinux {

/// What switches IPv6 off, or on against others, at the next start of the host. Its name sorts
/// behind those of others, because the last one counts.
inline constexpr const char* kIpv6SwitchFile = "/etc/sysctl.d/zz-kiva-ipv6.conf";

/// Whether the host will have IPv6 when it is started again.
bool ipv6ToBeOn(const Files& files);

/// The text of that file with IPv6 on or off; other lines stay.
std::string withIpv6Switch(std::string_view text, bool enabled);

/// For the next start. The management interface's file of ours gets the form that goes with it, and
/// nothing is reloaded. Throws HostCtlException, for example where the kernel was started without
/// IPv6.
void writeIpv6Enabled(const Files& files, bool enabled);

}  // namespace HostLinux
