// SPDX-License-Identifier: MIT
#include "network/read_pending_network.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "tarnctl/network/network_info_impl.h"

namespace Kiva {

using namespace HostCtl::Network;

namespace {

std::unique_ptr<TarnNic> findInterface() {
  TarnCtl::Network::NetworkInfoImpl network;
  network.UpdateManagementInterface();
  auto interface = network.GetManagementInterface();
  if (!interface) logError("%s", kNoManagementInterface);
  return interface;
}

// The local domain is searched anyway.
std::string suffixesOf(DnsConfig& dns) {
  const std::string local = dns.GetDomain();
  std::string suffixes;
  for (const std::string& domain : dns.GetSearchDomains())
    if (domain != local) suffixes += (suffixes.empty() ? "" : ", ") + domain;
  return suffixes;
}

void readNameServers(DnsConfig& dns, PendingNetwork& pending) {
  dns.Refresh();
  const auto servers = dns.GetNameServers();
  if (!servers.empty()) pending.primaryDns = servers[0];
  if (servers.size() > 1) pending.alternateDns = servers[1];
}

bool readPortGroup(const TarnNic& interface, PendingNetwork& pending) {
  if (interface.GetConnectionPoint().type != ConnecteeType::StandardPortGroup) return true;
  return getUplinks(interface, pending.adapters) && getVlanId(interface, pending.vlanId);
}

/// False where uplinks or VLAN cannot be read, which is logged.
bool readPending(const TarnNic& interface, PendingNetwork& pending) {
  TarnCtl::Network::RoutingInfoImpl routing(kDefaultStack);
  TarnCtl::Network::DnsConfigImpl dns(kDefaultStack);
  pending.ipConfig = interface.GetConfiguredIpConfig();
  pending.ipConfig.SetIpv4Gateway(routing.GetTarnDefaultGateway());
  pending.hostname = dns.GetHostname();
  pending.ipConfig.SetIpv6Gateway(routing.GetTarnIpv6DefaultGateway());
  readNameServers(dns, pending);
  if (!readPortGroup(interface, pending)) return false;
  pending.suffixes = suffixesOf(dns);
  return true;
}

}  // namespace

std::optional<ManagementNetwork> readManagementNetwork() try {
  ManagementNetwork network;
  PendingNetwork& pending = network.pending;
  pending.ipv6Enabled = pending.ipv6EnabledAtStart =
      TarnCtl::Network::NetworkInfoImpl().IsTarnIpv6Enabled();
  network.interface = findInterface();
  if (network.interface && !readPending(*network.interface, pending)) return std::nullopt;
  return network;
} catch (const HostCtl::Lib::HostCtlException& exception) {
  logError("%s", exception.what());
  return std::nullopt;
}

}  // namespace Kiva
