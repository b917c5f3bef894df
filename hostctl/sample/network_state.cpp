// SPDX-License-Identifier: MIT
#include "sample/network_state.h"

#include <algorithm>

#include "sample/ip_state.h"
#include "sample/json_read.h"
#include "sample/read_address.h"

namespace HostSample {

namespace {

using namespace HostCtl::Network;

constexpr Choices<ConnecteeType, 4> kConnectees = {{{"standard", ConnecteeType::StandardPortGroup},
                                                    {"distributed", ConnecteeType::DistributedPort},
                                                    {"opaque", ConnecteeType::Opaque},
                                                    {"unknown", ConnecteeType::Unknown}}};

ConnectionPoint readConnection(const JsonNode& node) {
  return {readChoice(node["type"], kConnectees), node["switch"].Text(), node["portGroup"].Text()};
}

std::string textOr(const JsonNode& node, const std::string& key, const std::string& otherwise) {
  const auto found = node.Find(key);
  return found ? found->Text() : otherwise;
}

bool flagOr(const JsonNode& node, const std::string& key, bool otherwise) {
  const auto found = node.Find(key);
  return found ? found->Flag() : otherwise;
}

/// What host.json says of an interface that is down is what it has when it is up again.
IpConfig whileDown(IpConfig config) {
  config.SetIpv4Address({});
  config.SetIpv4Netmask({});
  config.SetIpv6Networks({});
  return config;
}

HostSeam::KernelNic readKernelNic(const JsonNode& node) {
  readOffers(node);
  IpConfig running = readIpConfig(node["running"]);
  return {node["name"].Text(),
          node["management"].Flag(),
          node["defaultRoute"].Flag(),
          readIpConfig(node["configured"]),
          flagOr(node, "up", true) ? running : whileDown(running),
          readConnection(node["connection"]),
          textOr(node, "macAddress", "")};
}

void addIpv6(HostSeam::KernelNic& nic, bool enabled) {
  if (!enabled) return nic.running.SetIpv6Networks({});
  nic.configured.EnableIpv6();
  nic.running.EnableIpv6();
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

HostSeam::SwitchRecord readSwitch(const JsonNode& node) {
  const auto uplinks = readList(node["uplinks"], readText);
  const auto readPortGroup = [&](const JsonNode& group) -> HostSeam::PortGroupRecord {
    const auto active = group.Find("activeUplinks");
    return {group["name"].Text(), static_cast<std::int16_t>(group["vlanId"].Number(0, 4095)),
            active ? readList(*active, readText) : uplinks};
  };
  return {node["name"].Text(), uplinks, readList(node["portGroups"], readPortGroup)};
}

DistributedPort readDistributedPort(const JsonNode& node) {
  const auto vlan = node.Find("vlanId");
  const auto uplinks = node.Find("uplinks");
  return {node["name"].Text(), textOr(node, "nic", ""),
          static_cast<std::int16_t>(vlan ? vlan->Number(0, 4095) : 0),
          flagOr(node, "blocked", false),
          uplinks ? std::optional(readList(*uplinks, readText)) : std::nullopt};
}

HostSeam::DistributedSwitchRecord readDistributedSwitch(const JsonNode& node) {
  return {node["name"].Text(), flagOr(node, "thirdParty", false),
          readList(node["uplinks"], readText), readList(node["ports"], readDistributedPort)};
}

template <typename Switch>
void nameSwitch(PnicRecord& pnic, const std::vector<Switch>& switches) {
  for (const Switch& one : switches)
    if (std::count(one.uplinks.begin(), one.uplinks.end(), pnic.name) > 0)
      pnic.switchName = one.name;
}

HostSeam::DnsRecord readDns(const JsonNode& node) {
  return {node["hostname"].Text(), node["domain"].Text(),
          readList(node["nameServers"], readIpAddress), readList(node["searchDomains"], readText)};
}

HostSeam::RoutingRecord readRouting(const JsonNode& node, bool ipv6Enabled) {
  const Ipv6Address gateway = readIpv6(node["ipv6Gateway"]);
  return {readIpv4(node["ipv4Gateway"]), ipv6Enabled ? gateway : Ipv6Address()};
}

}  // namespace

void readNetworkState(const JsonNode& network, HostState& state) {
  state.ipv6Enabled = network["ipv6Enabled"].Flag();
  for (const char* optional : {"ipv6EnabledAtStart", "netDumper"})
    if (const auto found = network.Find(optional)) found->Flag();
  state.pnics = readList(network["pnics"], readPnic);
  state.switches = readList(network["switches"], readSwitch);
  if (const auto distributed = network.Find("distributedSwitches"))
    state.distributedSwitches = readList(*distributed, readDistributedSwitch);
  state.kernelNics = readList(network["kernelNics"], readKernelNic);
  state.dns = readDns(network["dns"]);
  state.routing = readRouting(network["routing"], state.ipv6Enabled);
  for (HostSeam::KernelNic& nic : state.kernelNics) addIpv6(nic, state.ipv6Enabled);
  for (PnicRecord& pnic : state.pnics) {
    nameSwitch(pnic, state.distributedSwitches);
    nameSwitch(pnic, state.switches);
  }
}

}  // namespace HostSample
