// SPDX-License-Identifier: MIT
#include "sample/switch_changes.h"

#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "sample/json_lists.h"
#include "sample/network_changes.h"

namespace HostSample {

namespace {

using HostCtl::Lib::HostCtlException;

Json& switchNamed(Json& network, const std::string& name) {
  return named(network["switches"], name, "standard switch");
}

Json& portGroupNamed(Json& network, const HostSeam::PortGroupName& wanted) {
  return named(switchNamed(network, wanted.switchName)["portGroups"], wanted.name,
               "port group of " + wanted.switchName + " named");
}

void requireAdapter(Json& network, const std::string& pnic) {
  named(network["pnics"], pnic, "physical adapter");
}

void refuseDuplicate(bool exists, const std::string& kind, const std::string& name) {
  if (exists) throw HostCtlException("There is a " + kind + " " + name + " already.");
}

[[noreturn]] void refuseMissing(const std::string& switchName, const std::string& pnic) {
  throw HostCtlException("The standard switch " + switchName + " has no uplink " + pnic + ".");
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
    Json& switches = network["switches"];
    refuseDuplicate(findNamed(switches, name) != nullptr, "standard switch", name);
    switches.push_back({{"name", name}, {"uplinks", Json::array()}, {"portGroups", Json::array()}});
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

void removeSwitch(Store&, const std::string& name) {
  throw HostCtlException("The standard switch " + name + " cannot be removed yet.");
}

void removePortGroup(Store&, const std::string& name, const std::string&) {
  throw HostCtlException("The port group " + name + " cannot be removed yet.");
}

void addUplink(Store& store, const std::string& pnic, const std::string& switchName) {
  changeNetwork(store, [&](Json& network) {
    Json& uplinks = switchNamed(network, switchName)["uplinks"];
    requireAdapter(network, pnic);
    for (const Json& one : network["switches"])
      if (contains(one["uplinks"], pnic))
        throw HostCtlException("The physical adapter " + pnic + " is an uplink of " +
                               one["name"].get<std::string>() + " already.");
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
    requireAdapter(network, pnic);
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
