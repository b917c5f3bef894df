// SPDX-License-Identifier: MIT
#include "network/management_interface.h"

#include <algorithm>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/take_named.h"
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

/// The standard switch of an interface, its port group there, and the host's other switches.
struct Attachment {
  std::unique_ptr<VirtualSwitch> standardSwitch;
  std::unique_ptr<PortGroup> portGroup;
  std::vector<std::unique_ptr<VirtualSwitch>> others;
};

/// The one failure that callers see, because another kind of switch is nothing that went wrong.
struct UnsupportedSwitch : HostCtlException {
  UnsupportedSwitch() : HostCtlException("Unsupported vSwitch type") {}
};

Attachment attachmentOf(const TarnNic& interface) {
  const ConnectionPoint connection = interface.GetConnectionPoint();
  if (connection.type != ConnecteeType::StandardPortGroup) throw UnsupportedSwitch();
  TarnCtl::Network::VirtualSwitchInfoImpl switches;
  Attachment found;
  found.others = switches.GetVirtualSwitches();
  found.standardSwitch = takeNamed(found.others, "Virtual switch", connection.switchName);
  auto groups = found.standardSwitch->GetPortGroups();
  found.portGroup = takeNamed(groups, "Port group", connection.portGroup);
  return found;
}

std::string troubleIn(const std::string& what, const HostCtlException& e) {
  return what + " failed: " + e.what();
}

template <typename Action>
bool logged(const std::string& what, const Action& action) try {
  action();
  return true;
} catch (const UnsupportedSwitch& e) {
  logError("%s", e.what());
  throw;
} catch (const HostCtlException& e) {
  logError("%s", troubleIn(what, e).c_str());
  return false;
}

constexpr const char* kGettingVlanId = "Getting VlanID";
constexpr const char* kGettingUplinks = "Getting uplinks";

std::int16_t vlanIdOf(const TarnNic& interface) {
  return attachmentOf(interface).portGroup->GetVlanId();
}

std::vector<std::string> uplinksOf(const TarnNic& interface) {
  return attachmentOf(interface).portGroup->GetNicTeamingPolicy().GetActiveUplinks();
}

template <typename Value>
Answer<Value> answerOf(const TarnNic& interface, const char* what, Value (*read)(const TarnNic&)) {
  try {
    return {read(interface)};
  } catch (const UnsupportedSwitch& e) {
    return {{}, e.what()};
  } catch (const HostCtlException& e) {
    return {{}, troubleIn(what, e)};
  }
}

void setUplinks(PortGroup& portGroup, std::vector<std::string> order, std::size_t active) {
  NicTeamingPolicy policy(std::move(order));
  policy.SetMaxActiveUplinks(static_cast<int>(active));
  portGroup.SetNicTeamingPolicy(policy);
}

// Behind the active adapters stand those that only wait.
void makeActive(PortGroup& portGroup, const std::string& pnic) {
  const NicTeamingPolicy policy = portGroup.GetNicTeamingPolicy();
  auto active = policy.GetActiveUplinks();
  if (std::find(active.begin(), active.end(), pnic) != active.end()) return;
  auto waiting = policy.GetUplinkOrder();
  waiting.erase(waiting.begin(), waiting.begin() + static_cast<std::ptrdiff_t>(active.size()));
  std::erase(waiting, pnic);
  active.push_back(pnic);
  const std::size_t number = active.size();
  active.insert(active.end(), waiting.begin(), waiting.end());
  setUplinks(portGroup, std::move(active), number);
}

void makeInactive(PortGroup& portGroup, const std::string& pnic) {
  const NicTeamingPolicy policy = portGroup.GetNicTeamingPolicy();
  auto active = policy.GetActiveUplinks();
  auto order = policy.GetUplinkOrder();
  std::erase(active, pnic);
  std::erase(order, pnic);
  setUplinks(portGroup, std::move(order), active.size());
}

void logTaking(const std::string& pnic, const Attachment& at) {
  for (const auto& other : at.others) {
    const auto uplinks = other->GetUplinks();
    if (std::find(uplinks.begin(), uplinks.end(), pnic) != uplinks.end())
      logInfo("Taking %s from %s", pnic.c_str(), other->GetName().c_str());
  }
}

}  // namespace

std::unique_ptr<TarnNic> readManagementInterface() {
  TarnCtl::Network::NetworkInfoImpl network;
  network.UpdateManagementInterface();
  auto interface = network.GetManagementInterface();
  if (!interface) throw HostCtlException(kNoManagementInterface);
  return interface;
}

std::unique_ptr<TarnNic> findManagementInterface() try {
  return readManagementInterface();
} catch (const HostCtlException&) {
  return nullptr;
}

std::unique_ptr<TarnNic> requireManagementInterface() {
  auto interface = findManagementInterface();
  if (!interface) logError("%s", kNoManagementInterface);
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
  vlanId = 0;
  return logged(kGettingVlanId, [&] { vlanId = vlanIdOf(interface); });
}

bool setVlanId(const TarnNic& interface, std::int16_t vlanId) {
  return logged("Setting VlanID", [&] { attachmentOf(interface).portGroup->SetVlanId(vlanId); });
}

bool getMaxActiveUplinks(const TarnNic& interface, int& number) {
  return logged("Getting max number of active uplinks", [&] {
    number = attachmentOf(interface).portGroup->GetNicTeamingPolicy().GetMaxActiveUplinks();
  });
}

bool getUplinks(const TarnNic& interface, std::vector<std::string>& uplinks) {
  uplinks.clear();
  return logged(kGettingUplinks, [&] { uplinks = uplinksOf(interface); });
}

Answer<std::int16_t> readVlanId(const TarnNic& interface) {
  return answerOf(interface, kGettingVlanId, vlanIdOf);
}

Answer<std::vector<std::string>> readUplinks(const TarnNic& interface) {
  return answerOf(interface, kGettingUplinks, uplinksOf);
}

bool addUplink(const TarnNic& interface, const std::string& pnic) {
  bool active = false;
  logged("Adding uplink " + pnic, [&] {
    const Attachment at = attachmentOf(interface);
    logTaking(pnic, at);
    at.standardSwitch->AddUplink(pnic);
    active = logged("VS: add uplink to teaming policy", [&] { makeActive(*at.portGroup, pnic); });
  });
  return active;
}

bool removeUplink(const TarnNic& interface, const std::string& pnic) {
  bool inactive = false;
  logged("Removing uplink " + pnic, [&] {
    const Attachment at = attachmentOf(interface);
    at.standardSwitch->RemoveUplink(pnic);
    inactive =
        logged("VS: remove uplink from teaming policy", [&] { makeInactive(*at.portGroup, pnic); });
  });
  return inactive;
}

}  // namespace Kiva
