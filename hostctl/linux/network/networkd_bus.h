// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace HostLinux {

// Has networkd and hostnamed act, each call within ten seconds. A call that fails is a
// HostCtlException of `operation` on `object`, whose cause is what the other side said, or that it
// does not run. networkd answers when it has taken a call up, not when the link is as it shall be.

/// networkd reads its files again: links whose `.network` file changed are configured anew, devices
/// that are missing are made.
void reloadNetworkd(const std::string& operation, const std::string& object);

/// networkd configures the link anew from its file, whether that changed or not.
void reconfigureLink(const std::string& operation, const std::string& object, int index);

/// The link's DHCP leases are asked for again.
void renewLink(const std::string& operation, const std::string& object, int index);

/// The name of the host, now and after a restart.
void setStaticHostname(const std::string& operation, const std::string& name);

}  // namespace HostLinux
