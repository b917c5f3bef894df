// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/network/nic.h"
#include "linux/files.h"

namespace HostLinux {

// DHCP leases, and an interface down and up again. They throw HostCtlException.

/// networkd 252 can renew an IPv4 lease alone; for IPv6 it begins anew with the whole link. A lease
/// that was given back is asked for again. Nobody waits for the answer.
void renewLease(const Files& files, const std::string& interface,
                HostCtl::Network::LeaseRenewal what);

/// Tells the server of an IPv4 lease. Where our own file is in force, which is about this interface
/// alone, networkd drops all leases and asks for none until the configuration is written, a lease
/// renewed, the interface taken up, or the host restarted; else it keeps what it has.
void releaseLease(const Files& files, const std::string& interface);

/// Lets networkd ask again from its next reload on; false where no lease was given back.
bool takeReleaseBack(const Files& files, const std::string& interface);

/// Takes the interface down, or up whatever of the rest fails: then waits for its carrier, ten
/// seconds at most, has networkd configure it, and waits for its static addresses.
void setNicUp(const Files& files, const std::string& interface, bool up);

}  // namespace HostLinux
