// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/network/ip_config.h"
#include "linux/network/ini_file.h"

namespace HostLinux {

// How an interface's IP configuration stands in its `.network` file. Whoever reads a file that was
// written from a configuration gets that configuration back; everything else in it stays.
//
// Two things need explaining. DHCPv6 without advertised addresses still listens to advertisements,
// for the routes that DHCPv6 has no word for, and takes no address from them. An IPv6 that is off
// for the host is kept in the section [X-Kiva-IPv6], which networkd passes over, because a static
// address would have it switch IPv6 on again for the interface.

/// Which form the IPv6 half of a file has.
enum class Ipv6Half { InForce, Kept };

/// A file that gives no addresses at all is IPv4 none and IPv6 as networkd takes its absence.
HostCtl::Network::IpConfig ipConfigIn(const IniFile& file);
/// Whether it gives static addresses or asks for leased ones.
bool givesAddresses(const IniFile& file);

/// Everything in `config` but the gateways. Those that stand in the file stay where the new
/// networks still reach them. The IPv6 half stays as it is where `config` has no IPv6 and the file
/// says something about it already.
void setIpConfig(IniFile& file, const std::string& interface,
                 const HostCtl::Network::IpConfig& config, Ipv6Half half);

/// Brings the IPv6 half into another form.
void setIpv6Half(IniFile& file, Ipv6Half half);

/// The empty address for none. An IPv6 gateway puts those that routers advertise out of use.
void setGateway(IniFile& file, HostCtl::Network::Ipv4Address gateway);
void setGateway(IniFile& file, const HostCtl::Network::Ipv6Address& gateway);

}  // namespace HostLinux
