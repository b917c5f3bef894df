// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <vector>

#include "linux/network/link_control.h"

namespace HostLinux {

/// A physical NIC of a switch, by the kernel's name. One that is not active belongs to the switch
/// without carrying anything. `permanentAddress` is the adapter's own.
struct SwitchUplink {
  std::string nic;
  std::string permanentAddress;
  bool active = true;
  bool operator==(const SwitchUplink&) const = default;
};

struct SwitchPortGroup {
  std::string name;
  int vlanId = 0;
  bool operator==(const SwitchPortGroup&) const = default;
};

/// A kernel NIC of the host itself on a port group: one end of a veth pair, whose other end is a
/// port of the switch.
struct SwitchInterface {
  std::string name;
  std::string portGroup;
  bool operator==(const SwitchInterface&) const = default;
};

/// A standard switch: a bridge of the kernel. Its active uplinks come first, in the teaming order.
/// One of them is a port of the bridge itself; several are a bond, which is that port. The bond
/// keeps one of them in use, the first while it has a link, because that needs nothing of the
/// physical switches: they may be several, and need not know of it.
struct Switch {
  std::string name;
  std::vector<SwitchUplink> uplinks;
  std::vector<SwitchPortGroup> portGroups;
  std::vector<SwitchInterface> interfaces;
  bool operator==(const Switch&) const = default;

  std::vector<SwitchUplink> ActiveUplinks() const;
  bool HasBond() const { return ActiveUplinks().size() > 1; }
  std::string BondName() const { return name + "-bond"; }
  /// What is the bridge's port for the uplinks; empty without an active one.
  std::string UplinkPort() const;
  /// What an uplink is a port of: the bridge, the bond, or nothing.
  std::string MasterOf(const SwitchUplink& uplink) const;

  /// Only a switch with a VLAN looks at the tags of frames.
  bool FiltersVlans() const;
  /// The number by which the bridge itself knows frames without a tag: one that no port group has.
  int NativeVlan() const;
  PortVlans VlansOfUplink() const;
  PortVlans VlansOf(const SwitchInterface& interface) const;

  SwitchPortGroup* FindPortGroup(const std::string& group);
};

/// The end of an interface's veth pair that is a port of its switch.
std::string portOf(const SwitchInterface& interface);

inline constexpr int kTrunkVlan = 4095;

using Switches = std::vector<Switch>;

Switch* findSwitch(Switches& switches, const std::string& name);
/// The switch that has `nic` among its uplinks, or null.
Switch* switchWithUplink(Switches& switches, const std::string& nic);

/// The devices that `switches` consist of, without their uplinks.
std::set<std::string> devicesOf(const Switches& switches);
/// Those of `before` that `after` has no more.
std::set<std::string> lostDevices(const Switches& before, const Switches& after);

}  // namespace HostLinux
