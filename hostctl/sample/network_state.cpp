// SPDX-License-Identifier: MIT
#include "sample/network_state.h"

#include <algorithm>

#include "sample/json_read.h"

namespace HostSample {

namespace {

using namespace HostCtl::Network;

enum class Ipv4Mode { None, Dhcp, Static };

constexpr Choices<Ipv4Mode, 3> kIpv4Modes = {
    {{"none", Ipv4Mode::None}, {"dhcp", Ipv4Mode::Dhcp}, {"static", Ipv4Mode::Static}}};

constexpr Choices<AddressType, 4> kAddressTypes = {{{"static", AddressType::Static},
                                                    {"dhcp", AddressType::Dhcp},
                                                    {"autoconf", AddressType::Autoconf},
                                                    {"other", AddressType::Other}}};

constexpr Choices<ConnecteeType, 4> kConnectees = {{{"standard", ConnecteeType::StandardPortGroup},
                                                    {"distributed", ConnecteeType::DistributedPort},
                                                    {"opaque", ConnecteeType::Opaque},
                                                    {"unknown", ConnecteeType::Unknown}}};

template <typename Address>
Address readAddress(const JsonNode& node) {
  if (const auto address = Address::FromString(node.Text())) return *address;
  node.Refuse(std::is_same_v<Address, Ipv4Address> ? "an IPv4 address" : "an IPv6 address");
}

IpAddress readIpAddress(const JsonNode& node) {
  if (const auto address = parseIpAddress(node.Text())) return *address;
  node.Refuse("an IP address");
}

Ipv4Address readOptionalIpv4(const JsonNode& node, const std::string& key, Ipv4Mode mode) {
  if (mode == Ipv4Mode::Static) return readAddress<Ipv4Address>(node[key]);
  const auto found = node.Find(key);
  return found ? readAddress<Ipv4Address>(*found) : Ipv4Address();
}

Ipv6Network readIpv6Network(const JsonNode& node) {
  return {readAddress<Ipv6Address>(node["address"]),
          static_cast<int>(node["prefix"].Number(0, 128)), readChoice(node["type"], kAddressTypes)};
}

IpConfig readIpConfig(const JsonNode& node) {
  const JsonNode ipv4 = node["ipv4"];
  const JsonNode ipv6 = node["ipv6"];
  const Ipv4Mode mode = readChoice(ipv4["mode"], kIpv4Modes);
  IpConfig config;
  config.SetUseDhcp(mode == Ipv4Mode::Dhcp, mode == Ipv4Mode::None);
  config.SetIpv4Address(readOptionalIpv4(ipv4, "address", mode));
  config.SetIpv4Netmask(readOptionalIpv4(ipv4, "netmask", mode));
  config.SetIpv4Gateway(readOptionalIpv4(ipv4, "gateway", Ipv4Mode::Dhcp));
  config.SetUseIpv6Dhcp(ipv6["dhcp"].Flag());
  config.SetUseIpv6RouterAdvertised(ipv6["routerAdvertisement"].Flag());
  config.SetIpv6Networks(readList(ipv6["networks"], readIpv6Network));
  config.SetDhcpDns(node["dnsFromDhcp"].Flag());
  return config;
}

ConnectionPoint readConnection(const JsonNode& node) {
  return {readChoice(node["type"], kConnectees), node["switch"].Text(), node["portGroup"].Text()};
}

HostSeam::KernelNic readKernelNic(const JsonNode& node) {
  return {node["name"].Text(),           node["management"].Flag(),
          node["defaultRoute"].Flag(),   readIpConfig(node["configured"]),
          readIpConfig(node["running"]), readConnection(node["connection"])};
}

PnicRecord readPnic(const JsonNode& node) {
  return {node["name"].Text(),
          node["description"].Text(),
          node["driver"].Text(),
          node["macAddress"].Text(),
          node["linkUp"].Flag(),
          static_cast<int>(node["speed"].Number(0, 1000000)),
          {}};
}

PortGroup readPortGroup(const JsonNode& node) {
  return {node["name"].Text(), static_cast<int>(node["vlanId"].Number(0, 4095))};
}

StandardSwitch readSwitch(const JsonNode& node) {
  return {node["name"].Text(), readList(node["uplinks"], readText),
          readList(node["portGroups"], readPortGroup)};
}

std::string switchOf(const PnicRecord& pnic, const std::vector<StandardSwitch>& switches) {
  for (const StandardSwitch& one : switches)
    if (std::count(one.uplinks.begin(), one.uplinks.end(), pnic.name) > 0) return one.name;
  return {};
}

HostSeam::DnsRecord readDns(const JsonNode& node) {
  return {node["hostname"].Text(), node["domain"].Text(),
          readList(node["nameServers"], readIpAddress), readList(node["searchDomains"], readText)};
}

}  // namespace

void readNetworkState(const JsonNode& network, HostState& state) {
  state.ipv6Enabled = network["ipv6Enabled"].Flag();
  state.pnics = readList(network["pnics"], readPnic);
  state.switches = readList(network["switches"], readSwitch);
  state.kernelNics = readList(network["kernelNics"], readKernelNic);
  state.dns = readDns(network["dns"]);
  const JsonNode routing = network["routing"];
  state.routing = {readAddress<Ipv4Address>(routing["ipv4Gateway"]),
                   readAddress<Ipv6Address>(routing["ipv6Gateway"])};
  for (PnicRecord& pnic : state.pnics) pnic.switchName = switchOf(pnic, state.switches);
}

}  // namespace HostSample
