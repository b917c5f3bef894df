// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/network/ip_config.h"
#include "linux/files.h"

namespace HostLinux {

// An interface's addresses and the host's gateways, written into the interface's own file and in
// force when the call returns; nobody waits for a lease. They throw HostCtlException with the host
// as it was, and touch nothing where nothing differs.

/// Everything but the gateways; one that the new networks do not reach goes. Where the host has no
/// IPv6 after its next start, the IPv6 half is kept for later.
void writeIpConfig(const Files& files, const std::string& interface,
                   const HostCtl::Network::IpConfig& config);

/// Of the management interface, which must have a network that reaches it; the empty address for
/// none.
void writeGateway(const Files& files, HostCtl::Network::Ipv4Address gateway);
void writeGateway(const Files& files, const HostCtl::Network::Ipv6Address& gateway);

/// Waits until the interface has the static addresses of `config`.
void waitForStaticAddresses(const Files& files, const std::string& operation,
                            const std::string& interface, const HostCtl::Network::IpConfig& config);
/// Waits until the default routes lead over the gateways that `config` itself names.
void waitForStaticGateways(const Files& files, const std::string& operation,
                           const std::string& interface, const HostCtl::Network::IpConfig& config);

}  // namespace HostLinux
