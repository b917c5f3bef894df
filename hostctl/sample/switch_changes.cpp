// SPDX-License-Identifier: MIT
#include "sample/switch_changes.h"

#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "sample/json_lists.h"
#include "sample/network_changes.h"
#include "sample/network_parts.h"

namespace HostSample {

namespace {

using HostCtl::Lib::HostCtlException;

/// All that share their names.
constexpr std::pair<const char*, const char*> kInterfaces[] = {
    {"switches", "standard switch"},
    {"distributedSwitches", "distributed switch"},
    {"kernelNics", "kernel interface"},
    {"pnics", "physical adapter"}};

void refuseDuplicate(bool exists, const std::string& kind, const std::string& name) {
  if (exists) throw HostCtlException("There is a " + kind + " " + name + " already.");
}

[[noreturn]] void refuseMissing(const std::string& switchName, const std::string& pnic) {
  throw HostCtlException("The standard switch " + switchName + " has no uplink " + pnic + ".");
}

/// `group` is one of the switch's; without it all of them are meant.
void refuseInUse(const Json& network, const std::string& switchName, const Json& group = nullptr) {
  for (const Json& nic : network["kernelNics"]) {
    const Json& at = nic["connection"];
    const bool on = at["type"] == "standard" && at["switch"] == switchName;
    if (on && (group.is_null() || at["portGroup"] == group))
      throw HostCtlException("The kernel interface " + nic["name"].get<std::string>() + " is on " +
                             (group.is_null() ? switchName : group.get<std::string>()) + ".");
  }
}

/// False when it is no uplink of the switch.
bool drop(Json& one, const std::string& pnic) {
  if (!removeFrom(one["uplinks"], pnic)) return false;
  for (Json& group : one["portGroups"])
    if (const auto active = group.find("activeUplinks"); active != group.end())
      removeFrom(*active, pnic);
  return true;
}

}  // namespace

void addSwitch(Store& store, const std::string& name) {
  changeNetwork(store, [&](Json& network) {
    for (const auto& [list, kind] : kInterfaces)
      refuseDuplicate(network.contains(list) && findNamed(network[list], name), kind, name);
    network["switches"].push_back(
        {{"name", name}, {"uplinks", Json::array()}, {"portGroups", Json::array()}});
  });
}

void addPortGroup(Store& store, const std::string& name, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) {
    Json& target = switchNamed(network, switchName);
    for (Json& one : network["switches"])
      refuseDuplicate(findNamed(one["portGroups"], name) != nullptr, "port group", name);
    target["portGroups"].push_back({{"name", name}, {"vlanId", 0}});
  });
}

void removeSwitch(Store& store, const std::string& name) {
  changeNetwork(store, [&](Json& network) {
    switchNamed(network, name);
    refuseInUse(network, name);
    removeItems(network["switches"], "name", name);
  });
}

void removePortGroup(Store& store, const std::string& name, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) {
    portGroupNamed(network, {switchName, name});
    refuseInUse(network, switchName, name);
    removeItems(switchNamed(network, switchName)["portGroups"], "name", name);
  });
}

void addUplink(Store& store, const std::string& pnic, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) {
    Json& uplinks = switchNamed(network, switchName)["uplinks"];
    requireFree(network, pnic);
    uplinks.push_back(pnic);
  });
}

void removeUplink(Store& store, const std::string& pnic, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) {
    if (!drop(switchNamed(network, switchName), pnic)) refuseMissing(switchName, pnic);
  });
}

void takeUplink(Store& store, const std::string& pnic, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) {
    Json& target = switchNamed(network, switchName);
    requireUndistributed(network, pnic);
    if (contains(target["uplinks"], pnic)) return;
    for (Json& one : network["switches"]) drop(one, pnic);
    target["uplinks"].push_back(pnic);
  });
}

void dropUplink(Store& store, const std::string& pnic, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) { drop(switchNamed(network, switchName), pnic); });
}

void setActiveUplinks(Store& store, const HostSeam::PortGroupName& portGroup,
                      const std::vector<std::string>& pnics) {
  changeNetwork(store, [&](Json& network) {
    const Json& uplinks = switchNamed(network, portGroup.switchName)["uplinks"];
    Json& group = portGroupNamed(network, portGroup);
    for (const std::string& pnic : pnics)
      if (!contains(uplinks, pnic)) refuseMissing(portGroup.switchName, pnic);
    if (group.contains("activeUplinks") || uplinks != Json(pnics)) group["activeUplinks"] = pnics;
  });
}

void setVlanId(Store& store, const HostSeam::PortGroupName& portGroup, std::int16_t vlanId) {
  changeNetwork(store,
                [&](Json& network) { portGroupNamed(network, portGroup)["vlanId"] = vlanId; });
}

}  // namespace HostSample
