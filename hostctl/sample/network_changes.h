// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "hostseam/network.h"
#include "sample/store.h"

namespace HostSample {

// The changes of host.json's kernel interfaces, gateways and name resolution. Each throws
// HostCtlException when the host as it is then does not allow it, with the file as it was; the
// check and the change are one step for all users of the file, which is not written where nothing
// differs.

/// How every change of the network is made: `change` alters the part `network` of host.json, or
/// throws.
void changeNetwork(Store& store, const std::function<void(Json& network)>& change);

/// What becomes of the network when the host starts: IPv6 as it was asked for, every interface up,
/// every lease taken anew.
void startNetwork(Json& network);

/// For the next start of the host.
void setIpv6Enabled(Store& store, bool enabled);

void setIpConfig(Store& store, const std::string& nic, const HostCtl::Network::IpConfig& config);
void renewLease(Store& store, const std::string& nic, HostCtl::Network::LeaseRenewal what);
void releaseLease(Store& store, const std::string& nic);
/// One that comes up takes its leases anew.
void setNicUp(Store& store, const std::string& nic, bool up);
void setMacAddress(Store& store, const std::string& nic, const std::string& macAddress);

/// The management interface's; an IPv4 gateway has to be on its network.
void setIpv4Gateway(Store& store, HostCtl::Network::Ipv4Address gateway);
void setIpv6Gateway(Store& store, const HostCtl::Network::Ipv6Address& gateway);

void setDns(Store& store, const HostSeam::DnsChange& change);

}  // namespace HostSample
