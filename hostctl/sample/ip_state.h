// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "hostctl/network/ip_config.h"
#include "hostctl/network/nic.h"
#include "sample/host_state.h"
#include "sample/json_node.h"

namespace HostSample {

// The IP configurations of an interface of host.json, and what its network gives it. A
// configuration is an object with
//   ipv4                 mode ("none", "dhcp" or "static"), address and netmask
//   ipv6                 dhcp, routerAdvertisement, and networks (address, prefix, type)
//   dnsFromDhcp
// Its gateways are the host's, and stand in network.routing alone. Whether there is IPv6 at all is
// the kernel's business: network.ipv6Enabled.

HostCtl::Network::IpConfig readIpConfig(const JsonNode& node);

/// The keys of `config`, without its gateways.
Json ipConfigJson(const HostCtl::Network::IpConfig& config);

/// What whoever asks on the interface's network is given: the optional key "offers" of a kernel
/// interface, each part of which may be left out or null, so that nobody answers.
struct Offers {
  /// "dhcp": address, netmask, gateway, and optional nameServers.
  struct Dhcp {
    HostCtl::Network::Ipv4Address address, netmask, gateway;
    std::vector<HostCtl::Network::IpAddress> nameServers;
  };
  /// "dhcpv6": address, and optional nameServers.
  struct Dhcpv6 {
    HostCtl::Network::Ipv6Address address;
    std::vector<HostCtl::Network::IpAddress> nameServers;
  };
  /// "routerAdvertisement": address and prefix that the interface makes of it, and gateway.
  struct Advertisement {
    HostCtl::Network::Ipv6Address address;
    int prefix = 64;
    HostCtl::Network::Ipv6Address gateway;
  };
  std::optional<Dhcp> dhcp;
  std::optional<Dhcpv6> dhcpv6;
  std::optional<Advertisement> advertisement;
};

/// Of an item of network.kernelNics.
Offers readOffers(const JsonNode& nic);

/// What an interface runs with once it has `configured`. What it was given before, and holds, stays
/// where it still asks for that and nothing else is offered.
HostCtl::Network::IpConfig inForce(const HostCtl::Network::IpConfig& configured,
                                   const HostCtl::Network::IpConfig& held, const Offers& offers);

/// After a renewal; a lease for which nothing is offered stays as it is.
HostCtl::Network::IpConfig renewed(HostCtl::Network::IpConfig running, const Offers& offers,
                                   HostCtl::Network::LeaseRenewal what);

/// After every lease was given back.
HostCtl::Network::IpConfig released(HostCtl::Network::IpConfig running);

/// The name servers that the leases held by `running` brought, IPv4's first.
std::vector<HostCtl::Network::IpAddress> leasedNameServers(
    const HostCtl::Network::IpConfig& running, const Offers& offers);

/// Whether `gateway` is a neighbour on the interface's IPv4 network.
bool isOnLink(HostCtl::Network::Ipv4Address gateway, const HostCtl::Network::IpConfig& running);

/// The host's gateways once the interface that they belong to runs with `after` in place of
/// `before`. A lease and an advertisement bring theirs and take them away again; one that was set
/// stays as long as it is on the interface's network.
HostSeam::RoutingRecord gatewaysAfter(const HostSeam::RoutingRecord& now,
                                      const HostCtl::Network::IpConfig& before,
                                      const HostCtl::Network::IpConfig& after,
                                      const Offers& offers);

}  // namespace HostSample
