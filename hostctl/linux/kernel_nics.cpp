// SPDX-License-Identifier: MIT
#include "linux/kernel_nics.h"

#include <linux/if_addr.h>

#include <algorithm>
#include <tuple>

#include "linux/pnics.h"

namespace HostLinux {

using HostCtl::Network::AddressType;
using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv4Address;
using HostCtl::Network::Ipv6Address;
using HostCtl::Network::Ipv6Network;
using HostSeam::KernelNic;

namespace {

constexpr int kWholeAddress = 128;

AddressType typeOf(const AddressRow& row) {
  if (std::get<Ipv6Address>(row.address).IsLinkLocal()) return AddressType::Other;
  if ((row.flags & IFA_F_MANAGETEMPADDR) != 0) return AddressType::Autoconf;
  if (row.lifetime == kForever) return AddressType::Static;
  return row.prefix == kWholeAddress ? AddressType::Dhcp : AddressType::Autoconf;
}

// Routes of equal metric keep the kernel's order.
template <class Address>
const DefaultRoute* bestRoute(const std::vector<DefaultRoute>& routes, int index) {
  const DefaultRoute* best = nullptr;
  for (const auto& route : routes) {
    const bool fits =
        std::holds_alternative<Address>(route.gateway) && (index == 0 || route.index == index);
    if (fits && (!best || route.metric < best->metric)) best = &route;
  }
  return best;
}

template <class Address>
Address gatewayOf(const std::vector<DefaultRoute>& routes, int index = 0) {
  const DefaultRoute* route = bestRoute<Address>(routes, index);
  return route ? std::get<Address>(route->gateway) : Address();
}

int managementRouteIndex(const std::vector<DefaultRoute>& routes) {
  const DefaultRoute* route = bestRoute<Ipv4Address>(routes, 0);
  if (!route) route = bestRoute<Ipv6Address>(routes, 0);
  return route ? route->index : 0;
}

const AddressRow* mainIpv4Address(const std::vector<AddressRow>& rows, int index) {
  const auto rank = [](const AddressRow& row) {
    return std::tuple((row.flags & IFA_F_SECONDARY) != 0, row.scope);
  };
  const AddressRow* best = nullptr;
  for (const auto& row : rows)
    if (row.index == index && std::holds_alternative<Ipv4Address>(row.address))
      if (!best || rank(row) < rank(*best)) best = &row;
  return best;
}

std::vector<Ipv6Network> ipv6Networks(const std::vector<AddressRow>& rows, int index) {
  std::vector<Ipv6Network> networks;
  for (const auto& row : rows) {
    const auto* address = std::get_if<Ipv6Address>(&row.address);
    if (row.index == index && address && (row.flags & IFA_F_DADFAILED) == 0)
      networks.push_back({*address, row.prefix, typeOf(row)});
  }
  return networks;
}

void setIpv6Networks(IpConfig& config, std::vector<Ipv6Network> networks) {
  const auto any = [&](AddressType type) {
    return std::any_of(networks.begin(), networks.end(),
                       [&](const Ipv6Network& network) { return network.type == type; });
  };
  config.SetUseIpv6Dhcp(any(AddressType::Dhcp));
  config.SetUseIpv6RouterAdvertised(any(AddressType::Autoconf));
  config.SetIpv6Networks(std::move(networks));
}

void setIpv4Dhcp(IpConfig& config, bool dhcp) {
  config.SetUseDhcp(dhcp);
  config.SetDhcpDns(dhcp);
}

IpConfig runningConfig(const NetworkTables& tables, const LinkRow& link) {
  IpConfig config;
  if (const AddressRow* row = mainIpv4Address(tables.addresses, link.index)) {
    config.SetIpv4Address(std::get<Ipv4Address>(row->address));
    config.SetIpv4Netmask(Ipv4Address::FromPrefix(row->prefix));
    config.SetIpv4Gateway(gatewayOf<Ipv4Address>(tables.defaultRoutes, link.index));
    setIpv4Dhcp(config, row->lifetime != kForever);
  } else if (link.asksForDhcpv4) {
    setIpv4Dhcp(config, true);
  }
  if (link.ipv6) config.EnableIpv6();
  setIpv6Networks(config, ipv6Networks(tables.addresses, link.index));
  config.SetIpv6Gateway(gatewayOf<Ipv6Address>(tables.defaultRoutes, link.index));
  return config;
}

AddressType reportedType(const std::vector<ReportedAddress>& reported,
                         const HostCtl::Network::IpAddress& address, AddressType otherwise) {
  const auto found = std::find_if(reported.begin(), reported.end(),
                                  [&](const auto& one) { return one.address == address; });
  return found == reported.end() ? otherwise : found->type;
}

}  // namespace

std::vector<KernelNic> kernelNicsFrom(const NetworkTables& tables) {
  const int routed = managementRouteIndex(tables.defaultRoutes);
  std::vector<KernelNic> nics;
  for (const auto& link : tables.links) {
    if (link.loopback) continue;
    KernelNic nic;
    nic.name = link.name;
    nic.setUpByKiva = link.name == kManagementNic;
    nic.carriesDefaultRoute = link.index == routed;
    nic.running = runningConfig(tables, link);
    nic.configured = nic.running;
    nics.push_back(std::move(nic));
  }
  return nics;
}

void refine(KernelNic& nic, const std::vector<ReportedAddress>& reported) {
  IpConfig& config = nic.running;
  if (const Ipv4Address address = config.GetIpv4Address(); !address.IsEmpty()) {
    const auto kernelSays = config.GetIpv4UseDhcp() ? AddressType::Dhcp : AddressType::Static;
    setIpv4Dhcp(config, reportedType(reported, address, kernelSays) == AddressType::Dhcp);
  }
  std::vector<Ipv6Network> networks = config.GetIpv6Networks();
  for (auto& network : networks)
    if (!network.address.IsLinkLocal())
      network.type = reportedType(reported, network.address, network.type);
  setIpv6Networks(config, std::move(networks));
  nic.configured = config;
}

HostSeam::RoutingRecord routingFrom(const std::vector<DefaultRoute>& routes) {
  return {gatewayOf<Ipv4Address>(routes), gatewayOf<Ipv6Address>(routes)};
}

}  // namespace HostLinux
