// SPDX-License-Identifier: MIT
#include "linux/network/switches.h"

#include <syslog.h>

#include <algorithm>

#include "hostctl/lib/exception.h"
#include "linux/network/foreign.h"
#include "linux/network/ip_file.h"
#include "linux/network/ip_settings.h"
#include "linux/network/mac_address.h"
#include "linux/network/move_from_ovs.h"
#include "linux/network/nic_use.h"
#include "linux/network/switch_editor.h"
#include "linux/network/switch_files.h"
#include "linux/network/wait.h"
#include "linux/pnics.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Network::PnicRecord;
using HostSeam::PortGroupName;
using HostSeam::SwitchRecord;

namespace {

auto findUplink(Switch& of, const std::string& nic) {
  return std::find_if(of.uplinks.begin(), of.uplinks.end(),
                      [&](const SwitchUplink& uplink) { return uplink.nic == nic; });
}

/// Its own address may be hidden while it is in a switch, so that is asked of what we know.
SwitchUplink takeFrom(SwitchEditor& editor, Switch& old, const std::string& nic,
                      const std::string& switchName) {
  const auto found = findUplink(old, nic);
  SwitchUplink taken = *found;
  old.uplinks.erase(found);
  taken.active = true;
  syslog(LOG_USER | LOG_INFO, "%s is taken from %s for %s", editor.Context().object.c_str(),
         old.name.c_str(), switchName.c_str());
  return taken;
}

SwitchPortGroup& groupNamed(SwitchEditor& editor, const PortGroupName& name) {
  if (SwitchPortGroup* found = editor.SwitchNamed(name.switchName).FindPortGroup(name.name))
    return *found;
  editor.Refuse("there is no such port group on " + name.switchName);
}

void takeInterface(SwitchEditor& editor, const std::string& nic) {
  const auto is = [&](const SwitchInterface& interface) { return interface.name == nic; };
  for (Switch& one : editor.All())
    if (std::erase_if(one.interfaces, is) > 0) return;
  editor.Refuse("is on no standard switch");
}

/// An uplink has none, and what reaches the host by them should not be cut off in passing.
void demandNoAddresses(SwitchEditor& editor, const std::string& nic) {
  if (givesAddresses(editor.Own().Read(ownFileName(nic, "network"))))
    editor.Refuse(nic + " has an IP configuration of its own");
}

/// An uplink that somebody else would have as soon as it is given back could be added nowhere.
void demandWayBack(const Files& files, SwitchEditor& editor, const std::string& nic) {
  if (indexOf(files, nic) == 0) return;
  const NicUses uses(files, editor.Own(), editor.All(), editor.Context().operation,
                     NicUses::OpenVswitch::Unasked);
  if (const auto use = uses.Of(nic); !use.empty())
    editor.Refuse("could not come back: " + nic + " " + use);
}

void waitForAddress(const ChangeContext& context, const std::string& nic,
                    const std::string& address) {
  const auto has = [&](const LinkRow& link) { return link.name == nic && link.address == address; };
  const bool set = waitFor(kInForceWithin, [&] {
    const auto links = readLinks(context.operation);
    return std::any_of(links.begin(), links.end(), has);
  });
  if (!set)
    throw HostCtl::Lib::HostCtlException(
        context.operation, nic,
        "systemd-networkd did not set the address " + address + " within 10 seconds");
}

}  // namespace

std::vector<SwitchRecord> readSwitches(const Files& files) {
  const auto nics = physicalNics(files);
  std::vector<SwitchRecord> records;
  for (const Switch& one : readSwitchFiles(OwnFiles(files))) {
    SwitchRecord& record = records.emplace_back();
    record.name = one.name;
    std::vector<std::string> active;
    for (const auto& uplink : one.uplinks) {
      record.uplinks.push_back(pnicNamed(nics, uplink.nic));
      if (uplink.active) active.push_back(record.uplinks.back());
    }
    for (const auto& group : one.portGroups)
      record.portGroups.push_back({group.name, static_cast<std::int16_t>(group.vlanId), active});
  }
  return records;
}

std::vector<PnicRecord> readPnics(const Files& files, const std::vector<LinkRow>& links) {
  auto pnics = readPnics(files);
  Switches switches = readSwitchFiles(OwnFiles(files));
  for (const auto& [name, nic] : physicalNics(files)) {
    const auto pnic = std::find_if(pnics.begin(), pnics.end(),
                                   [&, &name = name](const auto& one) { return one.name == name; });
    if (pnic == pnics.end()) continue;
    if (Switch* of = switchWithUplink(switches, nic)) {
      pnic->switchName = of->name;
      const auto uplink = findUplink(*of, nic);
      if (!uplink->permanentAddress.empty()) pnic->macAddress = uplink->permanentAddress;
    }
    for (const LinkRow& link : links)
      if (link.name == nic && !link.permanentAddress.empty())
        pnic->macAddress = link.permanentAddress;
  }
  return pnics;
}

void finishKilledChange(const Files& files, const std::string& operation, const std::string& pnic) {
  SwitchEditor(files, {operation, pnic}).ApplyLeft();
}

bool addUplink(const Files& files, const std::string& switchName, const std::string& pnic) {
  SwitchEditor editor(files, {"AddUplink", pnic});
  Switch& target = editor.SwitchNamed(switchName);
  const std::string nic = editor.NicNamed(pnic);
  Switch* old = switchWithUplink(editor.All(), nic);
  if (old == &target) return editor.Apply();
  if (!old) demandNoAddresses(editor, nic);
  SwitchUplink added = old ? takeFrom(editor, *old, nic, switchName) : editor.NewUplink(nic);
  const auto active = static_cast<std::ptrdiff_t>(target.ActiveUplinks().size());
  target.uplinks.insert(target.uplinks.begin() + active, std::move(added));
  return editor.Apply();
}

void removeUplink(const Files& files, const std::string& switchName, const std::string& pnic) {
  SwitchEditor editor(files, {"RemoveUplink", pnic});
  Switch& from = editor.SwitchNamed(switchName);
  const auto found = findUplink(from, editor.NicNamed(pnic));
  if (found == from.uplinks.end()) return;
  demandWayBack(files, editor, found->nic);
  from.uplinks.erase(found);
  editor.Apply();
}

void writeActiveUplinks(const Files& files, const PortGroupName& group,
                        const std::vector<std::string>& pnics) {
  SwitchEditor editor(files, {"WriteActiveUplinks", group.name});
  Switch& of = editor.SwitchNamed(group.switchName);
  groupNamed(editor, group);
  std::vector<SwitchUplink> ordered;
  for (const auto& pnic : pnics) {
    const auto found = findUplink(of, editor.NicNamed(pnic));
    if (found == of.uplinks.end()) editor.Refuse(pnic + " is no uplink of " + of.name);
    ordered.push_back({found->nic, found->permanentAddress, true});
    of.uplinks.erase(found);
  }
  for (auto& idle : of.uplinks) ordered.push_back({idle.nic, idle.permanentAddress, false});
  of.uplinks = std::move(ordered);
  editor.Apply();
}

void writeVlanId(const Files& files, const PortGroupName& group, int vlanId) {
  SwitchEditor editor(files, {"WriteVlanId", group.name});
  if (vlanId < 0 || vlanId > kTrunkVlan)
    editor.Refuse(std::to_string(vlanId) + " is no VLAN: 0 to 4095");
  groupNamed(editor, group).vlanId = vlanId;
  editor.Apply();
}

void writeMacAddress(const Files& files, const std::string& nic, const std::string& macAddress) {
  SwitchEditor editor(files, {"WriteMacAddress", nic});
  const auto address = MacAddress::FromString(macAddress);
  if (!address) editor.Refuse(macAddress + " is no address for an interface");
  const std::string name = ownFileName(nic, "network");
  if (!editor.Own().Exists(name)) editor.Refuse("Kiva did not set up this interface");
  IniFile file = editor.Own().Read(name);
  file.Set("Link", "MACAddress", address->ToString());
  editor.Apply({{name, file.Text()}},
               [&] { waitForAddress(editor.Context(), nic, address->ToString()); });
}

void addStandardSwitch(const Files& files, const std::string& name) {
  SwitchEditor editor(files, {"AddStandardSwitch", name});
  const bool known = findSwitch(editor.All(), name);
  if (files.Exists("/sys/class/net/" + name))
    editor.Refuse(known ? "there is such a switch already" : "there is an interface of this name");
  if (!known) editor.All().push_back({name, {}, {}, {}});
  editor.Apply();
}

void addPortGroup(const Files& files, const std::string& name, const std::string& switchName) {
  SwitchEditor editor(files, {"AddPortGroup", name});
  Switch& target = editor.SwitchNamed(switchName);
  for (Switch& one : editor.All())
    if (one.FindPortGroup(name)) editor.Refuse("there is such a port group already");
  target.portGroups.push_back({name, 0});
  editor.Apply();
}

void removeStandardSwitch(const Files& files, const std::string& name) {
  SwitchEditor editor(files, {"RemoveStandardSwitch", name});
  const auto& interfaces = editor.SwitchNamed(name).interfaces;
  if (!interfaces.empty()) editor.Refuse(interfaces.front().name + " is on it");
  std::erase_if(editor.All(), [&](const Switch& one) { return one.name == name; });
  editor.Apply();
}

void removePortGroup(const Files& files, const std::string& name, const std::string& switchName) {
  SwitchEditor editor(files, {"RemovePortGroup", name});
  groupNamed(editor, {switchName, name});
  Switch& of = editor.SwitchNamed(switchName);
  for (const auto& interface : of.interfaces)
    if (interface.portGroup == name) editor.Refuse(interface.name + " is on it");
  std::erase_if(of.portGroups, [&](const SwitchPortGroup& group) { return group.name == name; });
  editor.Apply();
}

void moveNic(const Files& files, const std::string& nic, const PortGroupName& group) {
  if (isOnDistributedSwitch(files, nic)) return moveNicFromOvs(files, nic, group);
  SwitchEditor editor(files, {"Migrate", nic});
  takeInterface(editor, nic);
  groupNamed(editor, group);
  editor.SwitchNamed(group.switchName).interfaces.push_back({nic, group.name});
  editor.Apply({}, [&] {
    const auto config = ipConfigIn(editor.Own().Read(ownFileName(nic, "network")));
    waitForStaticAddresses(files, editor.Context().operation, nic, config);
    waitForStaticGateways(files, editor.Context().operation, nic, config);
  });
}

}  // namespace HostLinux
