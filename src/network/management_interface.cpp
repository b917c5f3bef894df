// SPDX-License-Identifier: MIT
#include "network/management_interface.h"

#include <algorithm>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnecteeType;
using HostCtl::Network::ConnectionPoint;
using HostCtl::Network::NicTeamingPolicy;
using HostCtl::Network::PortGroup;
using HostCtl::Network::TarnNic;
using HostCtl::Network::VirtualSwitch;

namespace {

/// The standard switch of an interface and its port group there.
struct Attachment {
  std::unique_ptr<VirtualSwitch> standardSwitch;
  std::unique_ptr<PortGroup> portGroup;
};

template <typename Named>
std::unique_ptr<Named> takeNamed(std::vector<std::unique_ptr<Named>> all, const std::string& name) {
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const auto& one) { return one->GetName() == name; });
  if (found == all.end()) throw HostCtlException("There is no " + name + ".");
  return std::move(*found);
}

void requireStandardSwitch(const ConnectionPoint& connection) {
  constexpr const char* kUnsupported = "Unsupported vSwitch type";
  if (connection.type == ConnecteeType::StandardPortGroup) return;
  logError("%s", kUnsupported);
  throw HostCtlException(kUnsupported);
}

Attachment attachmentOf(const ConnectionPoint& connection) {
  TarnCtl::Network::VirtualSwitchInfoImpl switches;
  Attachment found;
  found.standardSwitch = takeNamed(switches.GetVirtualSwitches(), connection.switchName);
  found.portGroup = takeNamed(found.standardSwitch->GetPortGroups(), connection.portGroup);
  return found;
}

// Runs `action` on the interface's port group; `report` logs the host's failure. Only the wrong
// kind of switch leaves as an exception.
template <typename Action, typename Report>
bool onPortGroup(const TarnNic& interface, const Action& action, const Report& report) {
  ConnectionPoint connection;
  try {
    connection = interface.GetConnectionPoint();
  } catch (const HostCtlException& e) {
    return report(e), false;
  }
  requireStandardSwitch(connection);
  try {
    action(attachmentOf(connection));
    return true;
  } catch (const HostCtlException& e) {
    return report(e), false;
  }
}

template <typename Action>
bool teaming(const char* format, const Action& action) {
  try {
    action();
    return true;
  } catch (const HostCtlException& e) {
    logError("%s", (format + std::string(e.what())).c_str());
    return false;
  }
}

void makeActive(PortGroup& portGroup, const std::string& pnic) {
  auto order = portGroup.GetNicTeamingPolicy().GetActiveUplinks();
  if (std::find(order.begin(), order.end(), pnic) == order.end()) order.push_back(pnic);
  portGroup.SetNicTeamingPolicy(NicTeamingPolicy(std::move(order)));
}

void makeInactive(PortGroup& portGroup, const std::string& pnic) {
  auto order = portGroup.GetNicTeamingPolicy().GetActiveUplinks();
  std::erase(order, pnic);
  const int remaining = static_cast<int>(order.size());
  NicTeamingPolicy policy(std::move(order));
  policy.SetMaxActiveUplinks(remaining);
  portGroup.SetNicTeamingPolicy(policy);
}

}  // namespace

std::unique_ptr<TarnNic> findManagementInterface() {
  try {
    TarnCtl::Network::NetworkInfoImpl network;
    network.UpdateManagementInterface();
    return network.GetManagementInterface();
  } catch (const HostCtlException&) {
    return nullptr;
  }
}

std::unique_ptr<TarnNic> requireManagementInterface() {
  auto interface = findManagementInterface();
  if (!interface) logError("Could not get a suitable management interface");
  return interface;
}

bool isOnDistributedSwitch() {
  const auto interface = findManagementInterface();
  if (!interface) {
    logError("Could not locate the management interface");
    return false;
  }
  try {
    return interface->GetConnectionPoint().type == ConnecteeType::DistributedPort;
  } catch (const HostCtlException& e) {
    logError("Could not determine if a DVS was in use: %s", e.what());
    return false;
  }
}

std::string getSwitchName(const TarnNic& interface) try {
  const ConnectionPoint connection = interface.GetConnectionPoint();
  switch (connection.type) {
    case ConnecteeType::StandardPortGroup:
    case ConnecteeType::DistributedPort:
      return connection.switchName;
    case ConnecteeType::Opaque:
      logError("Opaque network connectee type not supported");
      return {};
    case ConnecteeType::Unknown:
      break;
  }
  logError("Unsupported connectee type");
  return {};
} catch (const HostCtlException& e) {
  logError("Getting switch name failed: %s", e.what());
  return {};
}

bool getVlanId(const TarnNic& interface, std::int16_t& vlanId) {
  return onPortGroup(
      interface, [&](const Attachment& at) { vlanId = at.portGroup->GetVlanId(); },
      [](const auto& e) { logError("Getting VlanID failed: %s", e.what()); });
}

bool setVlanId(const TarnNic& interface, std::int16_t vlanId) {
  return onPortGroup(
      interface, [&](const Attachment& at) { at.portGroup->SetVlanId(vlanId); },
      [](const auto& e) { logError("Setting VlanID failed: %s", e.what()); });
}

bool getMaxActiveUplinks(const TarnNic& interface, int& number) {
  return onPortGroup(
      interface,
      [&](const Attachment& at) {
        number = at.portGroup->GetNicTeamingPolicy().GetMaxActiveUplinks();
      },
      [](const auto& e) { logError("Getting max number of active uplinks failed: %s", e.what()); });
}

bool getUplinks(const TarnNic& interface, std::vector<std::string>& uplinks) {
  return onPortGroup(
      interface,
      [&](const Attachment& at) {
        uplinks = at.portGroup->GetNicTeamingPolicy().GetActiveUplinks();
      },
      [](const auto& e) { logError("Getting uplinks failed: %s", e.what()); });
}

bool addUplink(const TarnNic& interface, const std::string& pnic) {
  bool active = false;
  const bool added = onPortGroup(
      interface,
      [&](const Attachment& at) {
        at.standardSwitch->AddUplink(pnic);
        active = teaming("VS: add uplink to teaming policy failed: ",
                         [&] { makeActive(*at.portGroup, pnic); });
      },
      [&](const auto& e) { logError("Adding uplink %s failed: %s", pnic.c_str(), e.what()); });
  return added && active;
}

bool removeUplink(const TarnNic& interface, const std::string& pnic) {
  bool inactive = false;
  const bool removed = onPortGroup(
      interface,
      [&](const Attachment& at) {
        at.standardSwitch->RemoveUplink(pnic);
        inactive = teaming("VS: remove uplink from teaming policy failed: ",
                           [&] { makeInactive(*at.portGroup, pnic); });
      },
      [&](const auto& e) { logError("Removing uplink %s failed: %s", pnic.c_str(), e.what()); });
  return removed && inactive;
}

}  // namespace Kiva
