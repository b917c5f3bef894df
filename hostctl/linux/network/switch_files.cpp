// SPDX-License-Identifier: MIT
#include "linux/network/switch_files.h"

#include <algorithm>
#include <array>
#include <map>

#include "linux/network/mac_address.h"
#include "linux/text.h"

namespace HostLinux {

namespace {

constexpr const char* kOwn = "X-Kiva";
constexpr const char* kGroup = "X-Kiva-PortGroup";
constexpr std::array kKinds = {"switch", "bond", "uplink", "interface", "port"};

/// Our files by their names while they are made ready.
class FileSet {
 public:
  explicit FileSet(const OwnFiles& own) : own_(own) {}

  IniFile& Device(const std::string& name, const char* kind, const char* ownKind) {
    IniFile& file = Open(name, "netdev", ownKind);
    file.Set("NetDev", "Name", name);
    file.Set("NetDev", "Kind", kind);
    return file;
  }
  /// Of a link without addresses.
  IniFile& Link(const std::string& name, const char* ownKind) {
    IniFile& file = Open(name, "network", ownKind);
    file.Set("Match", "Name", name);
    file.Set("Link", "RequiredForOnline", "no");
    file.Set("Network", "LinkLocalAddressing", "no");
    file.Set("Network", "IPv6AcceptRA", "no");
    return file;
  }
  std::vector<FileChange> Changes() const;

 private:
  IniFile& Open(const std::string& name, const char* suffix, const char* ownKind) {
    const std::string file = ownFileName(name, suffix);
    IniFile& opened = files_.try_emplace(file, own_.Read(file)).first->second;
    opened.Set(kOwn, "Kind", ownKind);
    return opened;
  }

  const OwnFiles& own_;
  std::map<std::string, IniFile> files_;
};

bool isSwitchFile(const IniFile& file) {
  const auto kind = file.Get(kOwn, "Kind");
  return kind && std::find(kKinds.begin(), kKinds.end(), *kind) != kKinds.end();
}

std::vector<FileChange> FileSet::Changes() const {
  std::vector<FileChange> changes;
  for (const auto& [name, file] : files_) changes.push_back({name, file.Text()});
  for (const auto& name : own_.List())
    if (files_.count(name) == 0 && isSwitchFile(own_.Read(name)))
      changes.push_back({name, std::nullopt});
  return changes;
}

std::string textOf(PortVlans::Range range) {
  const std::string first = std::to_string(range.first);
  return range.first == range.last ? first : first + "-" + std::to_string(range.last);
}

void writeVlans(IniFile& file, const std::optional<PortVlans>& vlans) {
  constexpr const char* kSection = "BridgeVLAN";
  std::vector<std::string> tagged, untagged;
  if (vlans) untagged.push_back(std::to_string(vlans->untagged));
  if (vlans)
    for (const auto range : vlans->tagged) tagged.push_back(textOf(range));
  const bool same = file.GetAll(kSection, "PVID") == untagged &&
                    file.GetAll(kSection, "EgressUntagged") == untagged &&
                    file.GetAll(kSection, "VLAN") == tagged;
  if (same) return;
  file.RemoveSections(kSection, [](const IniSection&) { return true; });
  for (const auto& id : untagged) {
    IniSection& section = file.AddSection(kSection);
    section.Set("PVID", id);
    section.Set("EgressUntagged", id);
  }
  for (const auto& range : tagged) file.AddSection(kSection).Set("VLAN", range);
}

/// A file that is a port of the bridge has its VLANs as well, where the bridge filters.
void writeMaster(IniFile& file, const Switch& of, const std::string& master,
                 const PortVlans& vlans) {
  const bool onBridge = master == of.name;
  file.SetOrRemove("Network", "Bridge", onBridge ? master : "");
  file.SetOrRemove("Network", "Bond", onBridge ? "" : master);
  writeVlans(file, onBridge && of.FiltersVlans() ? std::optional(vlans) : std::nullopt);
}

void writePortGroups(IniFile& file, const std::vector<SwitchPortGroup>& groups) {
  file.RemoveSections(kGroup, [&](const IniSection& section) {
    const auto named = [&](const auto& group) { return group.name == section.Get("Name"); };
    return std::none_of(groups.begin(), groups.end(), named);
  });
  for (const auto& group : groups) {
    IniSection* section = nullptr;
    for (IniSection* one : file.Sections(kGroup))
      if (one->Get("Name") == group.name) section = one;
    if (!section) section = &file.AddSection(kGroup);
    section->Set("Name", group.name);
    section->Set("VlanId", std::to_string(group.vlanId));
  }
}

void writeBridge(FileSet& files, const Switch& one) {
  IniFile& device = files.Device(one.name, "bridge", "switch");
  device.Set("Bridge", "STP", "no");
  device.Set("Bridge", "ForwardDelaySec", "0");
  device.SetOrRemove("Bridge", "VLANFiltering", one.FiltersVlans() ? "yes" : "");
  device.SetOrRemove("Bridge", "DefaultPVID", one.FiltersVlans() ? "none" : "");
  writePortGroups(device, one.portGroups);
  IniFile& link = files.Link(one.name, "switch");
  // It would answer, with its own hardware address, whoever asks for an interface behind it.
  link.Set("Link", "ARP", "no");
  link.Set("Network", "ConfigureWithoutCarrier", "yes");
}

void writeBond(FileSet& files, const Switch& one) {
  IniFile& device = files.Device(one.BondName(), "bond", "bond");
  device.Set("Bond", "Mode", "active-backup");
  device.Set("Bond", "MIIMonitorSec", "0.1");
  device.Set("Bond", "PrimaryReselectPolicy", "always");
  // The bond keeps the address that it was made with: a device takes no other one from its file.
  const auto first = MacAddress::FromString(one.ActiveUplinks().front().permanentAddress);
  if (first && !device.Get("NetDev", "MACAddress"))
    device.Set("NetDev", "MACAddress", first->ForBond().ToString());
  writeMaster(files.Link(one.BondName(), "bond"), one, one.name, one.VlansOfUplink());
}

void writeUplink(FileSet& files, const Switch& of, std::size_t order) {
  const SwitchUplink& uplink = of.uplinks[order];
  const std::string master = of.MasterOf(uplink);
  IniFile& file = files.Link(uplink.nic, "uplink");
  const auto permanent = MacAddress::FromString(uplink.permanentAddress);
  const bool alone = master == of.name && permanent;
  file.SetOrRemove("Link", "MACAddress", alone ? permanent->ForUplink().ToString() : "");
  writeMaster(file, of, master, of.VlansOfUplink());
  file.SetOrRemove("Network", "PrimarySlave", of.HasBond() && order == 0 ? "yes" : "");
  file.Set(kOwn, "Switch", of.name);
  file.Set(kOwn, "Order", std::to_string(order));
  file.Set(kOwn, "Active", uplink.active ? "yes" : "no");
  file.SetOrRemove(kOwn, "PermanentMACAddress", uplink.permanentAddress);
}

void writeInterface(FileSet& files, const Switch& of, const SwitchInterface& interface) {
  files.Device(interface.name, "veth", "interface").Set("Peer", "Name", portOf(interface));
  IniFile& port = files.Link(portOf(interface), "port");
  writeMaster(port, of, of.name, of.VlansOf(interface));
  port.Set(kOwn, "Interface", interface.name);
  port.Set(kOwn, "PortGroup", interface.portGroup);
}

int numberIn(const std::optional<std::string>& text) {
  return static_cast<int>(parseInteger(text.value_or("")).value_or(0));
}

Switch switchIn(const IniFile& device) {
  Switch found{device.Get("NetDev", "Name").value_or(""), {}, {}, {}};
  for (const IniSection* group : device.Sections(kGroup))
    found.portGroups.push_back({group->Get("Name").value_or(""), numberIn(group->Get("VlanId"))});
  return found;
}

struct OrderedUplink {
  int order;
  std::string switchName;
  SwitchUplink uplink;
};

OrderedUplink uplinkIn(const IniFile& file) {
  return {numberIn(file.Get(kOwn, "Order")),
          file.Get(kOwn, "Switch").value_or(""),
          {file.Get("Match", "Name").value_or(""),
           file.Get(kOwn, "PermanentMACAddress").value_or(""), file.Get(kOwn, "Active") != "no"}};
}

}  // namespace

Switches readSwitchFiles(const OwnFiles& own) {
  Switches switches;
  std::vector<OrderedUplink> uplinks;
  std::vector<IniFile> ports;
  for (const auto& name : own.List()) {
    IniFile file = own.Read(name);
    const std::string kind = file.Get(kOwn, "Kind").value_or("");
    if (kind == "switch" && name.ends_with(".netdev")) switches.push_back(switchIn(file));
    if (kind == "uplink") uplinks.push_back(uplinkIn(file));
    if (kind == "port") ports.push_back(std::move(file));
  }
  std::stable_sort(uplinks.begin(), uplinks.end(),
                   [](const auto& a, const auto& b) { return a.order < b.order; });
  for (auto& [order, switchName, uplink] : uplinks)
    if (Switch* of = findSwitch(switches, switchName)) of->uplinks.push_back(std::move(uplink));
  for (const IniFile& port : ports)
    if (Switch* of = findSwitch(switches, port.Get("Network", "Bridge").value_or("")))
      of->interfaces.push_back(
          {port.Get(kOwn, "Interface").value_or(""), port.Get(kOwn, "PortGroup").value_or("")});
  return switches;
}

std::vector<FileChange> switchFilesFor(const Switches& switches, const OwnFiles& own) {
  FileSet files(own);
  for (const Switch& one : switches) {
    writeBridge(files, one);
    if (one.HasBond()) writeBond(files, one);
    for (std::size_t i = 0; i < one.uplinks.size(); ++i) writeUplink(files, one, i);
    for (const auto& interface : one.interfaces) writeInterface(files, one, interface);
  }
  return files.Changes();
}

}  // namespace HostLinux
