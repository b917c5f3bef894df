// SPDX-License-Identifier: MIT
#include "linux/network/ip_file.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "linux/network/dns_file.h"
#include "linux/network_file.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv4Address;
using HostCtl::Network::Ipv6Address;
using HostCtl::Network::Ipv6Network;

namespace {

constexpr const char* kNetwork = "Network";
constexpr const char* kKept = "X-Kiva-IPv6";
constexpr const char* kDhcpv6 = "DHCPv6";
constexpr const char* kAdvertised = "IPv6AcceptRA";

using Values = std::vector<std::string>;

struct Ipv4Network {
  Ipv4Address address, mask;
};

/// The IPv6 half of a file in either form.
struct Ipv6Part {
  bool dhcp = false;
  bool advertised = false;
  std::vector<Ipv6Network> networks;
  Ipv6Address gateway;
};

const char* yesNo(bool yes) {
  return yes ? "yes" : "no";
}

bool says(const IniFile& file, const char* section, const char* key, bool otherwise) {
  const auto value = file.Get(section, key);
  return value ? meansYes(*value) : otherwise;
}

std::optional<Ipv4Network> parseIpv4Network(const std::string& text) {
  const auto slash = text.find('/');
  const auto address = Ipv4Address::FromString(text.substr(0, slash));
  const auto bits = slash == text.npos ? std::nullopt : parseInteger(text.substr(slash + 1));
  if (!address || !bits || *bits < 1 || *bits > 32) return std::nullopt;
  return Ipv4Network{*address, Ipv4Address::FromPrefix(static_cast<int>(*bits))};
}

template <class Network, class Parse>
std::vector<Network> networksIn(const IniFile& file, const char* section, Parse parse) {
  std::vector<Network> found;
  for (const auto& value : file.GetAll(section, "Address"))
    if (const auto network = parse(value)) found.push_back(*network);
  return found;
}

template <class Address>
Address gatewayIn(const IniFile& file, const char* section) {
  Address found;
  for (const auto& value : file.GetAll(section, "Gateway"))
    if (const auto address = Address::FromString(value)) found = *address;
  return found;
}

/// Puts `ours` in the place of the values that `isOurs` knows.
template <class IsOurs>
void exchange(IniFile& file, const char* section, const char* key, IsOurs isOurs, Values ours) {
  Values values = file.GetAll(section, key);
  const auto first = std::find_if(values.begin(), values.end(), isOurs);
  const auto before = std::distance(values.begin(), first);
  std::erase_if(values, isOurs);
  values.insert(values.begin() + before, std::make_move_iterator(ours.begin()),
                std::make_move_iterator(ours.end()));
  file.SetAll(section, key, values);
}

bool isIpv4Network(const std::string& text) {
  return parseIpv4Network(text).has_value();
}

template <class Address>
void exchangeGateway(IniFile& file, const char* section, const Address& gateway) {
  exchange(file, section, "Gateway", Address::IsValidAddress,
           gateway.IsEmpty() ? Values() : Values{gateway.GetStringAddress()});
}

void exchangeNetworks(IniFile& file, const char* section,
                      const std::vector<Ipv6Network>& networks) {
  Values texts;
  for (const auto& network : networks) texts.push_back(network.ToString());
  exchange(file, section, "Address", Ipv6Network::IsValidAddressAndNetmask, texts);
}

bool isInForce(const IniFile& file) {
  const auto value = file.Get(kNetwork, "LinkLocalAddressing");
  return !value || meansYes(*value) || *value == "ipv6" || *value == "fallback";
}

const char* sectionOf(bool inForce) {
  return inForce ? kNetwork : kKept;
}

bool usesDhcpv6(const IniFile& file, bool inForce) {
  if (!inForce) return file.Get(kDhcpv6, "WithoutRA").has_value();
  const auto value = file.Get(kNetwork, "DHCP");
  return value && meansDhcpv6(*value);
}

bool usesAdvertisement(const IniFile& file, bool inForce) {
  if (!says(file, kNetwork, "IPv6AcceptRA", true) && inForce) return false;
  return says(file, kAdvertised, "UseAutonomousPrefix", inForce);
}

Ipv6Part ipv6PartIn(const IniFile& file) {
  const bool inForce = isInForce(file);
  const char* section = sectionOf(inForce);
  auto gateway = gatewayIn<Ipv6Address>(file, section);
  if (gateway.IsLinkLocal())
    gateway = Ipv6Address(gateway.GetBytes(), file.Get("Match", "Name").value_or(""));
  return {usesDhcpv6(file, inForce), usesAdvertisement(file, inForce),
          networksIn<Ipv6Network>(file, section, Ipv6Network::FromString), gateway};
}

bool usesDhcpv4(const IniFile& file) {
  const auto value = file.Get(kNetwork, "DHCP");
  return value && meansDhcpv4(*value);
}

const char* dhcpWord(bool ipv4, bool ipv6) {
  if (ipv4) return ipv6 ? "yes" : "ipv4";
  return ipv6 ? "ipv6" : "no";
}

void setDhcp(IniFile& file, bool ipv4, bool ipv6) {
  file.Set(kNetwork, "DHCP", dhcpWord(ipv4, ipv6));
}

bool reaches(const Ipv6Part& part, const Ipv6Address& gateway) {
  return gateway.IsLinkLocal() || part.dhcp || part.advertised ||
         std::any_of(part.networks.begin(), part.networks.end(), [&](const Ipv6Network& network) {
           return inSameNetwork(network.address, gateway, network.prefix);
         });
}

void setIpv6Part(IniFile& file, const Ipv6Part& part, Ipv6Half half) {
  const bool inForce = half == Ipv6Half::InForce;
  const bool listens = part.dhcp || part.advertised;
  const auto ifListening = [&](const char* value) { return listens ? value : ""; };
  exchangeNetworks(file, sectionOf(!inForce), {});
  exchangeGateway(file, sectionOf(!inForce), Ipv6Address());
  file.Set(kNetwork, "LinkLocalAddressing", inForce ? "ipv6" : "no");
  file.Set(kNetwork, "IPv6AcceptRA", yesNo(inForce && listens));
  file.SetOrRemove(kDhcpv6, "WithoutRA", part.dhcp ? "solicit" : "");
  file.SetOrRemove(kAdvertised, "UseAutonomousPrefix", ifListening(yesNo(part.advertised)));
  file.SetOrRemove(kAdvertised, "DHCPv6Client", ifListening(part.dhcp ? "always" : "no"));
  file.SetOrRemove(kAdvertised, "UseGateway", part.gateway.IsEmpty() ? "" : "no");
  exchangeNetworks(file, sectionOf(inForce), part.networks);
  exchangeGateway(file, sectionOf(inForce), part.gateway);
  setDhcp(file, usesDhcpv4(file), inForce && part.dhcp);
}

void setIpv4(IniFile& file, const IpConfig& config) {
  const auto address = config.GetIpv4Address(), mask = config.GetIpv4Netmask();
  const auto gateway = gatewayIn<Ipv4Address>(file, kNetwork);
  Values networks;
  if (config.GetIpv4UseStatic())
    networks = {address.GetStringAddress() + "/" + std::to_string(mask.GetPrefix())};
  exchange(file, kNetwork, "Address", isIpv4Network, networks);
  if (networks.empty() || !inSameNetwork(address, gateway, mask))
    exchangeGateway(file, kNetwork, Ipv4Address());
  setDhcp(file, config.GetIpv4UseDhcp(), isInForce(file) && usesDhcpv6(file, true));
}

}  // namespace

IpConfig ipConfigIn(const IniFile& file) {
  IpConfig config;
  const auto ipv4 = networksIn<Ipv4Network>(file, kNetwork, parseIpv4Network);
  const bool isStatic = !ipv4.empty() && !usesDhcpv4(file);
  config.SetUseDhcp(usesDhcpv4(file), !usesDhcpv4(file) && !isStatic);
  if (isStatic) {
    config.SetIpv4Address(ipv4.front().address);
    config.SetIpv4Netmask(ipv4.front().mask);
    config.SetIpv4Gateway(gatewayIn<Ipv4Address>(file, kNetwork));
  }
  const Ipv6Part ipv6 = ipv6PartIn(file);
  if (isInForce(file)) config.EnableIpv6();
  config.SetUseIpv6Dhcp(ipv6.dhcp);
  config.SetUseIpv6RouterAdvertised(ipv6.advertised);
  config.SetIpv6Networks(ipv6.networks);
  config.SetIpv6Gateway(ipv6.gateway);
  config.SetDhcpDns((usesDhcpv4(file) && takesLeasedDns(file, Dhcp::V4)) ||
                    (ipv6.dhcp && takesLeasedDns(file, Dhcp::V6)));
  return config;
}

bool givesAddresses(const IniFile& file) {
  const auto config = ipConfigIn(file);
  return !config.GetIpv4UseNone() || config.GetIpv6UseDhcp() ||
         !config.GetStaticIpv6Networks().empty();
}

void setIpConfig(IniFile& file, const std::string& interface, const IpConfig& config,
                 Ipv6Half half) {
  file.Set("Match", "Name", interface);
  if (config.GetIpv6Enabled() || !file.Get(kNetwork, "LinkLocalAddressing")) {
    Ipv6Part part{config.GetIpv6UseDhcp(), config.GetIpv6UseRouterAdvertisement(),
                  config.GetStaticIpv6Networks(), ipv6PartIn(file).gateway};
    if (!reaches(part, part.gateway)) part.gateway = {};
    setIpv6Part(file, part, config.GetIpv6Enabled() ? half : Ipv6Half::Kept);
  }
  setIpv4(file, config);
  setDnsFromDhcp(file, config.GetDnsFromDhcp());
}

void setIpv6Half(IniFile& file, Ipv6Half half) {
  setIpv6Part(file, ipv6PartIn(file), half);
}

void setGateway(IniFile& file, Ipv4Address gateway) {
  exchangeGateway(file, kNetwork, gateway);
}

void setGateway(IniFile& file, const Ipv6Address& gateway) {
  Ipv6Part part = ipv6PartIn(file);
  part.gateway = gateway;
  setIpv6Part(file, part, isInForce(file) ? Ipv6Half::InForce : Ipv6Half::Kept);
}

}  // namespace HostLinux
