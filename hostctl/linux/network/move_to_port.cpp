// SPDX-License-Identifier: MIT
#include <algorithm>
#include <exception>

#include "linux/network/distributed_switches.h"
#include "linux/network/foreign.h"
#include "linux/network/ovs_nic.h"
#include "linux/network/ovs_uplinks.h"
#include "linux/network/own_files.h"
#include "linux/pnics.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Network::HostLocalPort;

namespace {

constexpr int kLastVlan = 4094;

bool isTaken(const OvsBridges& bridges, const std::string& name) {
  return std::any_of(bridges.begin(), bridges.end(), [&](const OvsBridge& bridge) {
    return std::any_of(bridge.ports.begin(), bridge.ports.end(),
                       [&](const OvsPort& port) { return port.name == name; });
  });
}

void demandPossible(const Files& files, const OvsNic& nic, const HostLocalPort& port) {
  if (const auto manager = otherManagerOf(files, nic.Name()); !manager.empty())
    nic.Refuse("is configured by " + manager);
  if (isThirdParty(nic.Bridge())) nic.Refuse(nic.Bridge().name + " is managed by others");
  if (port.vlanId < 1 || port.vlanId > kLastVlan)
    nic.Refuse(std::to_string(port.vlanId) + " is no VLAN of a port: 1 to 4094");
  if (!isPlainName(port.name)) nic.Refuse(port.name + " is no name of a port");
  if (isTaken(nic.Bridges(), port.name) || findOnOvs(nic.Bridges(), port.name))
    nic.Refuse("there is a port " + port.name + " already");
}

/// What the port is to use; nothing where that is all uplinks of the switch.
UsedUplinks usedBy(const Files& files, const OvsNic& nic, const HostLocalPort& port) {
  const auto all = uplinksOf(files, nic.Bridge());
  const auto nics = physicalNics(files);
  std::vector<std::string> used;
  for (const auto& pnic : port.uplinks) {
    used.push_back(kernelNamed(nics, pnic));
    if (std::find(all.begin(), all.end(), used.back()) == all.end())
      nic.Refuse(pnic + " is no uplink of " + nic.Bridge().name);
  }
  const bool usesAll = std::all_of(all.begin(), all.end(), [&](const std::string& one) {
    return std::find(used.begin(), used.end(), one) != used.end();
  });
  return usesAll ? UsedUplinks() : used;
}

OvsChange::Settings settingsOf(const HostLocalPort& port, const UsedUplinks& used) {
  OvsChange::Settings settings = settingsFor(used);
  settings.push_back("tag=" + std::to_string(port.vlanId));
  return settings;
}

}  // namespace

void moveNicToPort(const Files& files, const std::string& name, const HostLocalPort& port) {
  const auto sole = OwnFiles(files).Lock();
  OvsNic nic(files, {"MoveToHostLocalPort", name}, name);
  demandPossible(files, nic, port);
  const UsedUplinks used = usedBy(files, nic, port);
  nic.ReadBlocking();
  OvsChange change, back;
  // A device that is made anew would get another hardware address.
  change.Set("Interface", nic.Interface().id, {nic.AddressSetting()});
  change.AddPort(nic.Bridge(), port.name, settingsOf(port, used), nic.Interface());
  change.RemovePort(nic.Bridge(), nic.Port());
  isolateUplinks(files, nic.Bridge(), nic.Port(), used, change, back);
  try {
    change.Commit(nic.Context());
    nic.PutBackState();
    const bool blocked = !port.unblocked && nic.IsBlocked();
    setBlocking(nic.Context(), nic.Bridge().name, name, blocked ? Blocking::On : Blocking::Off);
  } catch (const std::exception&) {
    nic.PutBack(std::move(back));
    throw;
  }
}

}  // namespace HostLinux
