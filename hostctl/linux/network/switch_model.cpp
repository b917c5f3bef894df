// SPDX-License-Identifier: MIT
#include "linux/network/switch_model.h"

#include <algorithm>

namespace HostLinux {

namespace {

constexpr int kFirstVlan = 1;
constexpr int kLastVlan = 4094;

template <class List, class Fits>
auto* findIn(List& list, const Fits& fits) {
  const auto found = std::find_if(list.begin(), list.end(), fits);
  return found == list.end() ? nullptr : &*found;
}

std::set<int> idsOf(const std::vector<SwitchPortGroup>& groups) {
  std::set<int> ids;
  for (const auto& group : groups) ids.insert(group.vlanId);
  return ids;
}

}  // namespace

std::vector<SwitchUplink> Switch::ActiveUplinks() const {
  std::vector<SwitchUplink> active;
  std::copy_if(uplinks.begin(), uplinks.end(), std::back_inserter(active),
               [](const SwitchUplink& uplink) { return uplink.active; });
  return active;
}

std::string Switch::UplinkPort() const {
  const auto active = ActiveUplinks();
  if (active.empty()) return {};
  return active.size() > 1 ? BondName() : active.front().nic;
}

std::string Switch::MasterOf(const SwitchUplink& uplink) const {
  if (!uplink.active) return {};
  return HasBond() ? BondName() : name;
}

bool Switch::FiltersVlans() const {
  return std::any_of(portGroups.begin(), portGroups.end(),
                     [](const SwitchPortGroup& group) { return group.vlanId != 0; });
}

int Switch::NativeVlan() const {
  const std::set<int> used = idsOf(portGroups);
  int number = kFirstVlan;
  while (used.count(number) != 0) ++number;
  return number;
}

PortVlans Switch::VlansOfUplink() const {
  const std::set<int> used = idsOf(portGroups);
  PortVlans vlans{NativeVlan(), {}};
  if (used.count(kTrunkVlan) != 0) {
    vlans.tagged = {{kFirstVlan, kLastVlan}};
    return vlans;
  }
  for (const int id : used)
    if (id != 0) vlans.tagged.push_back({id, id});
  return vlans;
}

PortVlans Switch::VlansOf(const SwitchInterface& interface) const {
  const auto* group =
      findIn(portGroups, [&](const auto& one) { return one.name == interface.portGroup; });
  const int id = group ? group->vlanId : 0;
  if (id == kTrunkVlan) return {NativeVlan(), {{kFirstVlan, kLastVlan}}};
  return {id == 0 ? NativeVlan() : id, {}};
}

SwitchPortGroup* Switch::FindPortGroup(const std::string& group) {
  return findIn(portGroups, [&](const auto& one) { return one.name == group; });
}

std::string portOf(const SwitchInterface& interface) {
  return interface.name + "-port";
}

Switch* findSwitch(Switches& switches, const std::string& name) {
  return findIn(switches, [&](const auto& one) { return one.name == name; });
}

Switch* switchWithUplink(Switches& switches, const std::string& nic) {
  return findIn(switches, [&](auto& one) {
    return findIn(one.uplinks, [&](const auto& uplink) { return uplink.nic == nic; }) != nullptr;
  });
}

std::set<std::string> devicesOf(const Switches& switches) {
  std::set<std::string> devices;
  for (const Switch& one : switches) {
    devices.insert(one.name);
    if (one.HasBond()) devices.insert(one.BondName());
    for (const auto& interface : one.interfaces)
      devices.insert({interface.name, portOf(interface)});
  }
  return devices;
}

std::set<std::string> lostDevices(const Switches& before, const Switches& after) {
  auto lost = devicesOf(before);
  for (const auto& kept : devicesOf(after)) lost.erase(kept);
  return lost;
}

}  // namespace HostLinux
