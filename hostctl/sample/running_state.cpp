// SPDX-License-Identifier: MIT
#include "sample/running_state.h"

#include <nlohmann/json.hpp>

#include "sample/read_address.h"

namespace HostSample {

using namespace HostCtl::Network;

namespace {

JsonNode nodeOf(const Json& json) {
  return {json, "network"};
}

}  // namespace

Json* managementNic(Json& network) {
  Json& nics = network["kernelNics"];
  for (const char* mark : {"management", "defaultRoute"})
    for (Json& nic : nics)
      if (nic[mark] == true) return &nic;
  return nics.empty() ? nullptr : &nics.front();
}

IpConfig configOf(const Json& nic, const char* which) {
  return readIpConfig(nodeOf(nic)[which]);
}

Offers offersOf(const Json& nic) {
  return readOffers(nodeOf(nic));
}

HostSeam::RoutingRecord routingOf(const Json& network) {
  const JsonNode routing = nodeOf(network)["routing"];
  return {readIpv4(routing["ipv4Gateway"]), readIpv6(routing["ipv6Gateway"])};
}

void writeRouting(Json& network, const HostSeam::RoutingRecord& routing) {
  network["routing"]["ipv4Gateway"] = routing.ipv4Gateway.GetStringAddress();
  network["routing"]["ipv6Gateway"] = routing.ipv6Gateway.GetScopedAddress();
}

void writeNameServers(Json& network, const std::vector<IpAddress>& servers) {
  Json list = Json::array();
  for (const IpAddress& server : servers) list.push_back(toString(server));
  network["dns"]["nameServers"] = list;
}

void run(Json& network, Json& nic, IpConfig after) {
  if (network["ipv6Enabled"] == false) after.SetIpv6Networks({});
  const IpConfig before = configOf(nic, "running");
  const Offers offers = offersOf(nic);
  nic["running"].update(ipConfigJson(after));
  if (&nic != managementNic(network)) return;
  writeRouting(network, gatewaysAfter(routingOf(network), before, after, offers));
  const auto servers = leasedNameServers(after, offers);
  if (after.GetDnsFromDhcp() && !servers.empty()) writeNameServers(network, servers);
}

void comeUp(Json& network, Json& nic) {
  nic.erase("up");
  run(network, nic, inForce(configOf(nic, "configured"), {}, offersOf(nic)));
}

}  // namespace HostSample
