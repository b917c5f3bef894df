// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostctl/network/address.h"
#include "linux/network/ini_file.h"

namespace HostLinux {

// How an interface's name servers and search domains stand in its `.network` file, and whether it
// takes those that leases and routers name.

enum class Dhcp { V4, V6 };

/// Whether the name servers of such a lease count, if the interface asks for one.
bool takesLeasedDns(const IniFile& file, Dhcp dhcp);

/// Has everything that leases and routers say about names count, in place of the file's own
/// servers; else nothing of it.
void setDnsFromDhcp(IniFile& file, bool fromDhcp);

/// Name servers in their order, and the search list. Domains that are not searched but routed to
/// this interface ("~corp.lan") stay.
void setResolver(IniFile& file, const std::vector<HostCtl::Network::IpAddress>& nameServers,
                 const std::vector<std::string>& searchDomains);

std::vector<HostCtl::Network::IpAddress> nameServersIn(const IniFile& file);
std::vector<std::string> searchDomainsIn(const IniFile& file);

}  // namespace HostLinux
