// SPDX-License-Identifier: MIT
#include "hosttools/network_lists.h"

#include <algorithm>
#include <array>

#include "hosttools/table.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace HostTools {

using namespace HostCtl::Network;

namespace {

/// By their numbers.
constexpr std::array kConnectees = {"unknown", "standard", "distributed", "opaque"};
constexpr std::array kGivers = {"", "", " dhcp", " advertised"};

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    if (!word.empty()) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string yesOrNo(bool is) {
  return is ? "yes" : "no";
}

Row row(Row first, const Row& rest) {
  first.insert(first.end(), rest.begin(), rest.end());
  return first;
}

/// Empty for the empty address.
template <typename Address>
std::string textOf(const Address& address) {
  return address.IsEmpty() ? "" : toString(IpAddress(address));
}

std::string connectionOf(const TarnNic& nic) {
  const ConnectionPoint connection = nic.GetConnectionPoint();
  return joined({kConnectees.at(static_cast<std::size_t>(connection.type)), connection.switchName,
                 connection.portGroup});
}

std::string ipv4Mode(const IpConfig& config) {
  if (config.GetIpv4UseNone()) return "none";
  return config.GetIpv4UseDhcp() ? "dhcp" : "static";
}

std::string ipv6Mode(const IpConfig& config) {
  if (!config.GetIpv6Enabled()) return "off";
  return joined({"on", config.GetIpv6UseDhcp() ? "dhcp" : "",
                 config.GetIpv6UseRouterAdvertisement() ? "advertised" : ""});
}

struct Setting {
  const char* name;
  std::string (*of)(const IpConfig& config);
};

constexpr std::array<Setting, 5> kSettings = {{
    {"IPv4", ipv4Mode},
    {"IPv4 address", [](const IpConfig& config) { return textOf(config.GetIpv4Address()); }},
    {"IPv4 netmask", [](const IpConfig& config) { return textOf(config.GetIpv4Netmask()); }},
    {"Name servers",
     [](const IpConfig& config) {
       return std::string(config.GetDnsFromDhcp() ? "dhcp" : "static");
     }},
    {"IPv6", ipv6Mode},
}};

std::string networkText(const Ipv6Network& network) {
  return network.ToString() + kGivers.at(static_cast<std::size_t>(network.type));
}

void addIpv6Addresses(std::vector<Row>& rows, const std::string& nic, const IpConfig& configured,
                      const IpConfig& running) {
  auto waiting = configured.GetStaticIpv6Networks();
  const auto add = [&](const std::string& one, const std::string& other) {
    rows.push_back({nic, "IPv6 address", one, other});
  };
  for (const Ipv6Network& network : running.GetIpv6Networks())
    add(std::erase(waiting, network) > 0 ? networkText(network) : "", networkText(network));
  for (const Ipv6Network& network : waiting) add(networkText(network), "");
}

void addInterface(std::vector<Row>& rows, const TarnNic& nic) {
  const std::string name = nic.GetInterfaceName();
  const IpConfig configured = nic.GetConfiguredIpConfig();
  const IpConfig running = nic.GetIpConfig();
  rows.push_back({name, "Connection", "", connectionOf(nic)});
  rows.push_back({name, "MAC address", "", nic.GetMacAddress()});
  for (const Setting& setting : kSettings)
    rows.push_back({name, setting.name, setting.of(configured), setting.of(running)});
  addIpv6Addresses(rows, name, configured, running);
}

}  // namespace

std::string ipTable() {
  std::vector<Row> rows = {{"Interface", "Setting", "Configured", "Running"}};
  for (const auto& nic : TarnCtl::Network::NetworkInfoImpl().GetTarnNics())
    addInterface(rows, *nic);
  return tableText(rows);
}

std::string routeTable() {
  TarnCtl::Network::RoutingInfoImpl routing(kDefaultStack);
  return tableText({{"Protocol", "Default Gateway"},
                    {"IPv4", textOf(routing.GetTarnDefaultGateway())},
                    {"IPv6", textOf(routing.GetTarnIpv6DefaultGateway())}});
}

std::string dnsTable() {
  TarnCtl::Network::DnsConfigImpl dns(kDefaultStack);
  std::vector<Row> rows = {
      {"Setting", "Value"}, {"Host name", dns.GetHostname()}, {"Domain", dns.GetDomain()}};
  for (const IpAddress& server : dns.GetNameServers())
    rows.push_back({"Name server", toString(server)});
  for (const std::string& domain : dns.GetSearchDomains())
    rows.push_back({"Search domain", domain});
  return tableText(rows);
}

std::string switchTable() {
  std::vector<Row> rows = {{"Switch", "Uplinks", "Port Group", "VLAN", "Active Uplinks"}};
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches()) {
    const auto groups = one->GetPortGroups();
    const std::string name = one->GetName(), uplinks = joined(one->GetUplinks());
    if (groups.empty()) rows.push_back({name, uplinks, "", "", ""});
    for (const auto& group : groups)
      rows.push_back({name, uplinks, group->GetName(), std::to_string(group->GetVlanId()),
                      joined(group->GetNicTeamingPolicy().GetActiveUplinks())});
  }
  return tableText(rows);
}

std::string distributedSwitchTable() {
  std::vector<Row> rows = {{"Switch", "Third Party", "Uplinks", "Port", "Interface", "VLAN",
                            "Blocked", "Port's Uplinks"}};
  for (const auto& one : TarnCtl::Network::DistributedSwitchInfoImpl().GetDistributedSwitches()) {
    const Row whole = {one->GetName(), yesOrNo(one->IsThirdParty()), joined(one->GetUplinks())};
    const auto ports = one->GetPorts();
    if (ports.empty()) rows.push_back(row(whole, {"", "", "", "", ""}));
    for (const DistributedPort& port : ports)
      rows.push_back(
          row(whole, {port.name, port.nic, std::to_string(port.vlanId), yesOrNo(port.blocked),
                      joined(port.uplinks.value_or(one->GetUplinks()))}));
  }
  return tableText(rows);
}

std::string adapterTable() {
  std::vector<Row> rows = {
      {"Adapter", "Driver", "MAC Address", "Link", "Mbit/s", "Switch", "Description"}};
  for (const PnicRecord& pnic : TarnCtl::Network::NetworkInfoImpl().GetPnics())
    rows.push_back({pnic.name, pnic.driver, pnic.macAddress, pnic.linkUp ? "up" : "down",
                    pnic.speed > 0 ? std::to_string(pnic.speed) : "", pnic.switchName,
                    pnic.description});
  return tableText(rows);
}

}  // namespace HostTools
