// SPDX-License-Identifier: MIT
#include "sample/ip_state.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "sample/json_read.h"
#include "sample/read_address.h"

namespace HostSample {

using namespace HostCtl::Network;

namespace {

enum class Ipv4Mode { None, Dhcp, Static };

constexpr Choices<Ipv4Mode, 3> kIpv4Modes = {
    {{"none", Ipv4Mode::None}, {"dhcp", Ipv4Mode::Dhcp}, {"static", Ipv4Mode::Static}}};

constexpr Choices<AddressType, 4> kAddressTypes = {{{"static", AddressType::Static},
                                                    {"dhcp", AddressType::Dhcp},
                                                    {"autoconf", AddressType::Autoconf},
                                                    {"other", AddressType::Other}}};

constexpr int kWholeAddress = 128;

Ipv4Mode modeOf(const IpConfig& config) {
  if (config.GetIpv4UseNone()) return Ipv4Mode::None;
  return config.GetIpv4UseDhcp() ? Ipv4Mode::Dhcp : Ipv4Mode::Static;
}

Ipv4Address readIpv4Of(const JsonNode& node, const std::string& key, Ipv4Mode mode) {
  if (mode == Ipv4Mode::Static) return readIpv4(node[key]);
  const auto found = node.Find(key);
  return found ? readIpv4(*found) : Ipv4Address();
}

Ipv6Network readIpv6Network(const JsonNode& node) {
  return {readIpv6(node["address"]), static_cast<int>(node["prefix"].Number(0, kWholeAddress)),
          readChoice(node["type"], kAddressTypes)};
}

Json ipv6NetworkJson(const Ipv6Network& network) {
  return {{"address", network.address.GetScopedAddress()},
          {"prefix", network.prefix},
          {"type", nameOf(network.type, kAddressTypes)}};
}

std::vector<IpAddress> readNameServers(const JsonNode& offer) {
  const auto servers = offer.Find("nameServers");
  return servers ? readList(*servers, readIpAddress) : std::vector<IpAddress>();
}

bool isLeased(const Ipv6Network& network) {
  return network.type == AddressType::Dhcp;
}

bool isAdvertised(const Ipv6Network& network) {
  return network.type == AddressType::Autoconf;
}

bool holdsIpv4Lease(const IpConfig& config) {
  return config.GetIpv4UseDhcp() && !config.GetIpv4Address().IsEmpty();
}

bool holdsIpv6Lease(const IpConfig& config) {
  const auto& networks = config.GetIpv6Networks();
  return std::any_of(networks.begin(), networks.end(), isLeased);
}

void setIpv4(IpConfig& config, Ipv4Address address, Ipv4Address netmask) {
  config.SetIpv4Address(address);
  config.SetIpv4Netmask(netmask);
}

void setIpv6Lease(IpConfig& config, const std::optional<Offers::Dhcpv6>& offer) {
  auto networks = config.GetIpv6Networks();
  std::erase_if(networks, isLeased);
  const auto place = std::find_if(networks.begin(), networks.end(), isAdvertised);
  if (offer) networks.insert(place, {offer->address, kWholeAddress, AddressType::Dhcp});
  config.SetIpv6Networks(std::move(networks));
}

void setAdvertised(IpConfig& config, const std::optional<Offers::Advertisement>& offer) {
  if (!config.GetIpv6UseRouterAdvertisement() || !offer) return;
  auto networks = config.GetIpv6Networks();
  std::erase_if(networks, isAdvertised);
  networks.push_back({offer->address, offer->prefix, AddressType::Autoconf});
  config.SetIpv6Networks(std::move(networks));
}

Ipv4Address ipv4GatewayAfter(Ipv4Address now, const IpConfig& before, const IpConfig& after,
                             const Offers& offers) {
  if (holdsIpv4Lease(after)) return offers.dhcp ? offers.dhcp->gateway : now;
  const bool stays = before.GetIpv4UseStatic() && after.GetIpv4UseStatic();
  return stays && isOnLink(now, after) ? now : Ipv4Address();
}

Ipv6Address ipv6GatewayAfter(const Ipv6Address& now, const IpConfig& after, const Offers& offers) {
  if (!offers.advertisement) return now;
  const Ipv6Address& advertised = offers.advertisement->gateway;
  if (after.GetIpv6UseRouterAdvertisement()) return now.IsEmpty() ? advertised : now;
  return now == advertised ? Ipv6Address() : now;
}

}  // namespace

IpConfig readIpConfig(const JsonNode& node) {
  const JsonNode ipv4 = node["ipv4"];
  const JsonNode ipv6 = node["ipv6"];
  const Ipv4Mode mode = readChoice(ipv4["mode"], kIpv4Modes);
  IpConfig config;
  config.SetUseDhcp(mode == Ipv4Mode::Dhcp, mode == Ipv4Mode::None);
  setIpv4(config, readIpv4Of(ipv4, "address", mode), readIpv4Of(ipv4, "netmask", mode));
  config.SetUseIpv6Dhcp(ipv6["dhcp"].Flag());
  config.SetUseIpv6RouterAdvertised(ipv6["routerAdvertisement"].Flag());
  config.SetIpv6Networks(readList(ipv6["networks"], readIpv6Network));
  config.SetDhcpDns(node["dnsFromDhcp"].Flag());
  return config;
}

Json ipConfigJson(const IpConfig& config) {
  Json ipv4 = {{"mode", nameOf(modeOf(config), kIpv4Modes)}};
  if (config.GetIpv4UseStatic() || holdsIpv4Lease(config)) {
    ipv4["address"] = config.GetIpv4Address().GetStringAddress();
    ipv4["netmask"] = config.GetIpv4Netmask().GetStringAddress();
  }
  Json networks = Json::array();
  for (const auto& network : config.GetIpv6Networks()) networks.push_back(ipv6NetworkJson(network));
  return {{"ipv4", ipv4},
          {"ipv6",
           {{"dhcp", config.GetIpv6UseDhcp()},
            {"routerAdvertisement", config.GetIpv6UseRouterAdvertisement()},
            {"networks", networks}}},
          {"dnsFromDhcp", config.GetDnsFromDhcp()}};
}

Offers readOffers(const JsonNode& nic) {
  Offers offers;
  const auto all = nic.Find("offers");
  if (!all) return offers;
  if (const auto dhcp = all->Find("dhcp"))
    offers.dhcp = {readIpv4((*dhcp)["address"]), readIpv4((*dhcp)["netmask"]),
                   readIpv4((*dhcp)["gateway"]), readNameServers(*dhcp)};
  if (const auto dhcpv6 = all->Find("dhcpv6"))
    offers.dhcpv6 = {readIpv6((*dhcpv6)["address"]), readNameServers(*dhcpv6)};
  if (const auto router = all->Find("routerAdvertisement"))
    offers.advertisement = {readIpv6((*router)["address"]),
                            static_cast<int>((*router)["prefix"].Number(0, kWholeAddress)),
                            readIpv6((*router)["gateway"])};
  return offers;
}

IpConfig inForce(const IpConfig& configured, const IpConfig& held, const Offers& offers) {
  IpConfig running = configured;
  if (configured.GetIpv4UseDhcp() && held.GetIpv4UseDhcp())
    setIpv4(running, held.GetIpv4Address(), held.GetIpv4Netmask());
  else if (!configured.GetIpv4UseStatic())
    setIpv4(running, {}, {});
  auto networks = configured.GetStaticIpv6Networks();
  for (const Ipv6Network& network : held.GetIpv6Networks())
    if ((configured.GetIpv6UseDhcp() && isLeased(network)) ||
        (configured.GetIpv6UseRouterAdvertisement() && isAdvertised(network)))
      networks.push_back(network);
  running.SetIpv6Networks(std::move(networks));
  setAdvertised(running, offers.advertisement);
  return renewed(std::move(running), offers, LeaseRenewal::Ipv4AndIpv6);
}

IpConfig renewed(IpConfig running, const Offers& offers, LeaseRenewal what) {
  if (running.GetIpv4UseDhcp() && offers.dhcp)
    setIpv4(running, offers.dhcp->address, offers.dhcp->netmask);
  if (what == LeaseRenewal::Ipv4AndIpv6 && running.GetIpv6UseDhcp() && offers.dhcpv6)
    setIpv6Lease(running, offers.dhcpv6);
  return running;
}

IpConfig released(IpConfig running) {
  if (running.GetIpv4UseDhcp()) setIpv4(running, {}, {});
  setIpv6Lease(running, std::nullopt);
  return running;
}

std::vector<IpAddress> leasedNameServers(const IpConfig& running, const Offers& offers) {
  std::vector<IpAddress> servers;
  if (holdsIpv4Lease(running) && offers.dhcp) servers = offers.dhcp->nameServers;
  if (holdsIpv6Lease(running) && offers.dhcpv6)
    servers.insert(servers.end(), offers.dhcpv6->nameServers.begin(),
                   offers.dhcpv6->nameServers.end());
  return servers;
}

bool isOnLink(Ipv4Address gateway, const IpConfig& running) {
  const auto own = running.GetIpv4Address();
  return !own.IsEmpty() && inSameNetwork(own, gateway, running.GetIpv4Netmask());
}

HostSeam::RoutingRecord gatewaysAfter(const HostSeam::RoutingRecord& now, const IpConfig& before,
                                      const IpConfig& after, const Offers& offers) {
  return {ipv4GatewayAfter(now.ipv4Gateway, before, after, offers),
          ipv6GatewayAfter(now.ipv6Gateway, after, offers)};
}

}  // namespace HostSample
