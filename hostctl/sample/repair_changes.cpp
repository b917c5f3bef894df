// SPDX-License-Identifier: MIT
#include "sample/repair_changes.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "sample/json_lists.h"
#include "sample/network_changes.h"
#include "sample/network_parts.h"

namespace HostSample {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::HostLocalPort;
using HostSeam::PortGroupName;

namespace {

constexpr int kLastVlan = 4094;

void moveTo(Json& network, Json& nic, const PortGroupName& portGroup) {
  portGroupNamed(network, portGroup);
  leavePorts(network, nic["name"]);
  plugIn(nic, "standard", portGroup);
}

Json& groupOn(Json& network, const std::string& switchName, const Json& preferred) {
  Json& groups = switchNamed(network, switchName)["portGroups"];
  if (groups.empty())
    throw HostCtlException("The standard switch " + switchName + " has no port group.");
  Json* same = findNamed(groups, preferred);
  return same ? *same : groups.front();
}

/// The switch that the NIC is on.
Json& distributedSwitchOf(Json& network, const Json& nic) {
  const Json& at = nic["connection"];
  if (at["type"] != "distributed")
    throw HostCtlException("The kernel interface " + nic["name"].get<std::string>() +
                           " is on no distributed switch.");
  return distributedSwitchNamed(network, at["switch"]);
}

void requireMakeable(Json& on, const HostLocalPort& port) {
  const std::string name = on["name"];
  if (findNamed(on["ports"], port.name))
    throw HostCtlException("There is a port " + port.name + " of " + name + " already.");
  if (port.vlanId < 1 || port.vlanId > kLastVlan)
    throw HostCtlException("The VLAN of a port is a number from 1 to " + std::to_string(kLastVlan) +
                           ".");
  for (const std::string& uplink : port.uplinks)
    if (!contains(on["uplinks"], uplink))
      throw HostCtlException("The distributed switch " + name + " has no uplink " + uplink + ".");
}

bool isBlocked(const Json& ports, const std::string& nic) {
  return std::any_of(ports.begin(), ports.end(), [&](const Json& port) {
    return has(port, "nic", nic) && has(port, "blocked", true);
  });
}

/// A distributed switch has its adapters in the host's order, whichever came last.
void sortLike(const Json& pnics, Json& names) {
  const auto place = [&](const Json& name) {
    return std::find_if(pnics.begin(), pnics.end(),
                        [&](const Json& pnic) { return pnic["name"] == name; });
  };
  std::stable_sort(names.begin(), names.end(),
                   [&](const Json& one, const Json& other) { return place(one) < place(other); });
}

}  // namespace

void moveNic(Store& store, const std::string& nic, const PortGroupName& portGroup) {
  changeNetwork(store, [&](Json& network) {
    Json& moving = nicNamed(network, nic);
    if (moving["connection"]["type"] == "opaque")
      throw HostCtlException("The kernel interface " + nic + " is on an opaque network.");
    moveTo(network, moving, portGroup);
  });
}

void moveOpaqueNic(Store& store, const std::string& nic, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) {
    Json& moving = nicNamed(network, nic);
    const Json& group = groupOn(network, switchName, moving["connection"]["portGroup"]);
    moveTo(network, moving, {switchName, group["name"]});
  });
}

void moveNicToPort(Store& store, const std::string& nic, const HostLocalPort& port) {
  changeNetwork(store, [&](Json& network) {
    Json& moving = nicNamed(network, nic);
    Json& on = distributedSwitchOf(network, moving);
    requireMakeable(on, port);
    const bool blocked = !port.unblocked && isBlocked(on["ports"], nic);
    leavePorts(network, nic);
    on["ports"].push_back({{"name", port.name},
                           {"nic", nic},
                           {"vlanId", port.vlanId},
                           {"blocked", blocked},
                           {"uplinks", port.uplinks}});
    plugIn(moving, "distributed", {on["name"], port.name});
  });
}

void addDistributedUplink(Store& store, const std::string& switchName, const std::string& pnic) {
  changeNetwork(store, [&](Json& network) {
    Json& uplinks = distributedSwitchNamed(network, switchName)["uplinks"];
    if (contains(uplinks, pnic)) return;
    requireFree(network, pnic);
    uplinks.push_back(pnic);
    sortLike(network["pnics"], uplinks);
  });
}

void removeDistributedUplink(Store& store, const std::string& switchName, const std::string& pnic) {
  changeNetwork(store, [&](Json& network) {
    removeFrom(distributedSwitchNamed(network, switchName)["uplinks"], pnic);
  });
}

void disableNetDumper(Store& store) {
  changeNetwork(store, [](Json& network) {
    if (network.contains("netDumper")) network["netDumper"] = false;
  });
}

}  // namespace HostSample
