// SPDX-License-Identifier: MIT
#include "sample/fresh_network.h"

#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "sample/network_changes.h"
#include "sample/network_parts.h"
#include "sample/running_state.h"

namespace HostSample {

using HostCtl::Network::IpConfig;

namespace {

constexpr const char* kSwitch = "vSwitch0";
constexpr const char* kPortGroup = "Management Network";
constexpr const char* kNic = "tarn0";

IpConfig nothing() {
  IpConfig config;
  config.SetUseDhcp(false, true);
  return config;
}

IpConfig byDhcp() {
  IpConfig config;
  config.SetUseDhcp(true);
  config.SetDhcpDns(true);
  return config;
}

/// What its network offers belongs to whatever interface is there next.
Json bareNic(Json nic) {
  for (const char* forgotten : {"macAddress", "up"}) nic.erase(forgotten);
  nic["configured"] = nic["running"] = ipConfigJson(nothing());
  plugIn(nic, "unknown", {});
  return nic;
}

void clear(Json& network) {
  Json kept = Json::array();
  if (const Json* nic = managementNic(network)) kept.push_back(bareNic(*nic));
  for (const Json& nic : network["kernelNics"]) leavePorts(network, nic["name"]);
  network["kernelNics"] = kept;
  network["switches"] = Json::array();
  writeRouting(network, {});
  network["dns"]["nameServers"] = network["dns"]["searchDomains"] = Json::array();
  network.erase("ipv6EnabledAtStart");
  if (network["ipv6Enabled"] == false) network["ipv6EnabledAtStart"] = true;
}

const Json& chooseAdapter(const Json& network) {
  const Json* first = nullptr;
  for (const Json& pnic : network["pnics"]) {
    if (!isUndistributed(network, pnic["name"])) continue;
    if (pnic["linkUp"] == true) return pnic;
    if (!first) first = &pnic;
  }
  if (!first) throw HostCtl::Lib::HostCtlException("This host has no physical adapter to use.");
  return *first;
}

Json freshNic(Json nic, const Json& pnic) {
  nic["name"] = kNic;
  nic["management"] = nic["defaultRoute"] = true;
  nic["macAddress"] = pnic["macAddress"];
  nic["configured"] = ipConfigJson(byDhcp());
  plugIn(nic, "standard", {kSwitch, kPortGroup});
  return nic;
}

}  // namespace

void clearNetwork(Store& store) {
  changeNetwork(store, clear);
}

void autoConfigureNetwork(Store& store) {
  changeNetwork(store, [](Json& network) {
    clear(network);
    const Json& pnic = chooseAdapter(network);
    network["switches"].push_back(
        {{"name", kSwitch},
         {"uplinks", Json::array({pnic["name"]})},
         {"portGroups", Json::array({{{"name", kPortGroup}, {"vlanId", 0}}})}});
    Json& nics = network["kernelNics"];
    const Json before = nics.empty() ? bareNic(Json::object()) : nics.front();
    nics = Json::array({freshNic(before, pnic)});
    comeUp(network, nics.front());
  });
}

}  // namespace HostSample
