// SPDX-License-Identifier: MIT
#include "network/read_pending_network.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "tarnctl/network/network_info_impl.h"

namespace Kiva {

using namespace HostCtl::Network;

namespace {

void readIpConfig(const TarnNic& interface, PendingNetwork& pending) {
  TarnCtl::Network::RoutingInfoImpl routing(kDefaultStack);
  pending.ipConfig = interface.GetConfiguredIpConfig();
  pending.ipConfig.SetIpv4Gateway(routing.GetTarnDefaultGateway());
  pending.ipConfig.SetIpv6Gateway(routing.GetTarnIpv6DefaultGateway());
}

// The local domain is searched anyway.
std::string suffixesOf(DnsConfig& dns) {
  const std::string local = dns.GetDomain();
  std::string suffixes;
  for (const std::string& domain : dns.GetSearchDomains())
    if (domain != local) suffixes += (suffixes.empty() ? "" : ", ") + domain;
  return suffixes;
}

void readDns(PendingNetwork& pending) {
  TarnCtl::Network::DnsConfigImpl dns(kDefaultStack);
  dns.Refresh();
  pending.hostname = dns.GetHostname();
  const auto servers = dns.GetNameServers();
  if (!servers.empty()) pending.primaryDns = servers[0];
  if (servers.size() > 1) pending.alternateDns = servers[1];
  pending.suffixes = suffixesOf(dns);
}

bool readPortGroup(const TarnNic& interface, PendingNetwork& pending) {
  if (interface.GetConnectionPoint().type != ConnecteeType::StandardPortGroup) return true;
  return getUplinks(interface, pending.adapters) && getVlanId(interface, pending.vlanId);
}

}  // namespace

std::optional<ManagementNetwork> readManagementNetwork() try {
  ManagementNetwork network;
  PendingNetwork& pending = network.pending;
  pending.ipv6Enabled = pending.ipv6EnabledAtStart =
      TarnCtl::Network::NetworkInfoImpl().IsTarnIpv6Enabled();
  network.interface = requireManagementInterface();
  if (!network.interface) return network;
  readIpConfig(*network.interface, pending);
  readDns(pending);
  if (!readPortGroup(*network.interface, pending)) return std::nullopt;
  return network;
} catch (const HostCtl::Lib::HostCtlException& exception) {
  logError("%s", exception.what());
  return std::nullopt;
}

}  // namespace Kiva
