// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hostseam/network.h"
#include "linux/files.h"

namespace HostLinux {

// What the host is called after a change, and the hosts file that says so too.

/// The first label of a name.
std::string_view labelOf(std::string_view name);

/// The name that the host named `name` has after `change`: its domain stays unless that is changed.
std::string nameAfter(std::string_view name, const HostSeam::DnsChange& change);

/// A hosts file in which the host's own entry (127.0.1.1) has followed the host from one name to
/// another. Entries that do not hold the old name stay.
std::string withRenamedHost(std::string_view hosts, std::string_view from, std::string_view to);

/// Has /etc/hosts follow the host, where there is one. What goes wrong is only logged: the host has
/// its new name then.
void renameInHosts(const Files& files, const std::string& from, const std::string& to);

}  // namespace HostLinux
