// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/network.h"
#include "linux/files.h"

namespace HostLinux {

/// Changes the host's name through hostnamed, and its name servers and search list: in the
/// management interface's file where it has one of ours, and in /etc/resolv.conf where that is an
/// ordinary file. One that is a link belongs to a resolver service, which networkd tells. With DNS
/// from DHCP the servers in resolv.conf are those of networkd's leases, as far as there are any
/// yet. Throws HostCtlException with the host as it was; what is so already is not touched.
void writeDns(const Files& files, const HostSeam::DnsChange& change);

/// Brings /etc/resolv.conf in line with networkd's leases, as writeDns would, where the management
/// interface has DNS from DHCP and nobody else configures it: for whoever learns that leases may
/// have changed. What is so already is not touched, and where there is no server yet, the old ones
/// stay. Throws HostCtlException.
void followLeasedServers(const Files& files);

}  // namespace HostLinux
