// SPDX-License-Identifier: MIT
#include "console/network_summary.h"

#include <algorithm>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "tarnctl/network/network_info_impl.h"
#include "ui/markup_text.h"
#include "ui/string_factory.h"

namespace Kiva {

namespace {

using HostCtl::Network::IpAddress;
using HostCtl::Network::IpConfig;

constexpr int kMostRows = 13;
constexpr std::size_t kMostIpv6Addresses = 2;

std::string orNotSet(const std::string& value) {
  return value.empty() ? catalogueText(TextId::kNotSet) : plainText(value);
}

std::string group(TextId label, const std::string& value) {
  return std::string(catalogueText(label)) + "\n" + value + "\n";
}

std::string ipv4Group(const IpConfig& config) {
  const auto address = config.GetIpv4Address();
  std::string value = orNotSet(address.IsEmpty() ? "" : address.GetStringAddress());
  if (config.GetIpv4UseDhcp())
    value += std::string("\n") + catalogueText(TextId::kNetworkIdentityAcquiredFromDhcp);
  return group(TextId::kIPv4Address, value);
}

// The mark of left-out addresses shares the last address's row where it fits.
std::string ipv6Group(const IpConfig& config) {
  const auto& networks = config.GetIpv6Networks();
  if (networks.empty()) return "";
  std::string value;
  for (std::size_t i = 0; i < std::min(networks.size(), kMostIpv6Addresses); ++i)
    value += (i ? "\n" : "") + networks[i].address.GetStringAddress();
  if (networks.size() > kMostIpv6Addresses) value += " ...";
  return group(TextId::kIPv6Addresses, value);
}

std::string serverGroup(TextId label, const std::vector<IpAddress>& servers, std::size_t index) {
  return index < servers.size() ? group(label, toString(servers[index])) : "";
}

// The menu must be usable above all where the network is broken.
template <typename Read>
void attempt(const Read& read) try {
  read();
} catch (const HostCtl::Lib::HostCtlException& exception) {
  logError("%s", exception.what());
}

}  // namespace

std::string networkSummaryText(const std::string& hostname, const IpConfig& config,
                               const std::vector<IpAddress>& nameServers, int columns) {
  std::string text;
  for (const std::string& next :
       {group(TextId::kHostname, orNotSet(hostname)), ipv4Group(config), ipv6Group(config),
        serverGroup(TextId::kPrimaryDnsServer, nameServers, 0),
        serverGroup(TextId::kAlternateDnsServer, nameServers, 1)})
    if (countLines(text + next, columns) <= kMostRows) text += next;
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

std::string networkSummary(int columns) {
  std::string hostname;
  IpConfig config;
  std::vector<IpAddress> nameServers;
  attempt([&] {
    if (const auto nic = findManagementInterface()) config = nic->GetIpConfig();
  });
  attempt([&] {
    TarnCtl::Network::DnsConfigImpl dns(HostCtl::Network::kDefaultStack);
    hostname = dns.GetHostname();
    nameServers = dns.GetNameServers();
  });
  return networkSummaryText(hostname, config, nameServers, columns);
}

}  // namespace Kiva
