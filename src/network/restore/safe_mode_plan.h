// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace Kiva {

/// How the management network comes onto a new standard switch, as a value: every step, and what
/// undoes it, is decided before anything is changed. moveManagementNetwork carries it out.
namespace SafeMode {

enum class SwitchKind { Standard, Distributed };

struct Switch {
  std::string name;
  SwitchKind kind = SwitchKind::Standard;
};

struct PortGroup {
  std::string name, switchName;
};

/// What carries a port group's traffic, the primary adapter first.
struct Teaming {
  PortGroup of;
  std::vector<std::string> uplinks;
};

/// The management network as it is before, read once the operator wants it moved.
struct Before {
  std::string nic;
  Switch on;
  /// The interface's, on a standard switch.
  std::string portGroup;
  /// 0 for none.
  std::int16_t vlanId = 0;
  std::vector<std::string> uplinks;
  /// Of the port groups that lose an adapter.
  std::vector<Teaming> teamings;
  /// What the new switch and its port group may not be called.
  std::vector<std::string> switchNames, portGroupNames;
};

struct AddSwitch {
  std::string name;
};
struct RemoveSwitch {
  std::string name;
};
struct AddPortGroup {
  PortGroup group;
};
struct RemovePortGroup {
  PortGroup group;
};
struct SetVlan {
  PortGroup group;
  std::int16_t vlanId;
};
struct TakeUplink {
  std::string pnic;
  Switch from;
};
struct GiveUplink {
  std::string pnic;
  Switch to;
};
/// As far as the switch has the adapters.
struct SetTeaming {
  Teaming teaming;
};
struct MoveNic {
  PortGroup to;
};

using Call = std::variant<AddSwitch, RemoveSwitch, AddPortGroup, RemovePortGroup, SetVlan,
                          TakeUplink, GiveUplink, SetTeaming, MoveNic>;

/// When a step's undoing is called for: a step may fail with part of it done.
enum class Undo { WhenDone, WhenTried };

/// Logged and shown by its name first; those of one name are one to the operator.
struct NamedCall {
  std::string name;
  Call call;
};

struct Step {
  NamedCall what;
  /// In their order; each is made even when another fails.
  std::vector<NamedCall> undo = {};
  Undo when = Undo::WhenDone;
};

struct Plan {
  PortGroup to;
  std::vector<Step> steps;
};

}  // namespace SafeMode

SafeMode::Plan planSafeMode(const SafeMode::Before& before);

}  // namespace Kiva
