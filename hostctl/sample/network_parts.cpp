// SPDX-License-Identifier: MIT
#include "sample/network_parts.h"

#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "sample/json_lists.h"

namespace HostSample {

namespace {

const Json* switchWith(const Json& switches, const std::string& pnic) {
  for (const Json& one : switches)
    if (contains(one["uplinks"], pnic)) return &one;
  return nullptr;
}

const Json* distributedSwitchWith(const Json& network, const std::string& pnic) {
  const auto switches = network.find("distributedSwitches");
  return switches == network.end() ? nullptr : switchWith(*switches, pnic);
}

void refuseUsed(const Json* by, const std::string& pnic) {
  if (by)
    throw HostCtl::Lib::HostCtlException("The physical adapter " + pnic + " is an uplink of " +
                                         by->at("name").get<std::string>() + " already.");
}

}  // namespace

Json& nicNamed(Json& network, const std::string& name) {
  return named(network["kernelNics"], name, "kernel interface");
}

Json& switchNamed(Json& network, const std::string& name) {
  return named(network["switches"], name, "standard switch");
}

Json& portGroupNamed(Json& network, const HostSeam::PortGroupName& wanted) {
  return named(switchNamed(network, wanted.switchName)["portGroups"], wanted.name,
               "port group of " + wanted.switchName + " named");
}

Json& distributedSwitchNamed(Json& network, const std::string& name) {
  return named(network["distributedSwitches"], name, "distributed switch");
}

void plugIn(Json& nic, const char* type, const HostSeam::PortGroupName& where) {
  nic["connection"].update(
      {{"type", type}, {"switch", where.switchName}, {"portGroup", where.name}});
}

void leavePorts(Json& network, const std::string& nic) {
  const auto switches = network.find("distributedSwitches");
  if (switches == network.end()) return;
  for (Json& one : *switches) removeItems(one["ports"], "nic", nic);
}

bool isUndistributed(const Json& network, const std::string& pnic) {
  return distributedSwitchWith(network, pnic) == nullptr;
}

void requireUndistributed(Json& network, const std::string& pnic) {
  named(network["pnics"], pnic, "physical adapter");
  refuseUsed(distributedSwitchWith(network, pnic), pnic);
}

void requireFree(Json& network, const std::string& pnic) {
  requireUndistributed(network, pnic);
  refuseUsed(switchWith(network["switches"], pnic), pnic);
}

}  // namespace HostSample
