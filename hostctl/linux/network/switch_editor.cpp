// SPDX-License-Identifier: MIT
#include "linux/network/switch_editor.h"

#include <net/if.h>
#include <syslog.h>

#include <algorithm>

#include "hostctl/lib/exception.h"
#include "linux/network/change_note.h"
#include "linux/network/networkd_bus.h"
#include "linux/network/nic_use.h"
#include "linux/network/switch_files.h"
#include "linux/network_file.h"
#include "linux/pnics.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

bool anyBond(const Switches& switches) {
  return std::any_of(switches.begin(), switches.end(),
                     [](const Switch& one) { return one.HasBond(); });
}

/// Keeps the uplinks' ports that switches are about to lose silent, because networkd may give a
/// bridge its new port while it has the old one; two ways to the same network are a loop. They stay
/// so until the switches are as they shall be: as they were, where a change fails.
class SilentPorts {
 public:
  explicit SilentPorts(const ChangeContext& context) : context_(context) {}
  ~SilentPorts() { Raise(); }
  SilentPorts(const SilentPorts&) = delete;
  SilentPorts& operator=(const SilentPorts&) = delete;

  void Silence(const Switches& before, Switches after) {
    const auto links = readLinks(context_.operation);
    for (const Switch& one : before) {
      const Switch* later = findSwitch(after, one.name);
      const std::string port = later ? later->UplinkPort() : "";
      if (!port.empty() && port != one.UplinkPort()) Silence(one.UplinkPort(), links);
    }
  }
  void Raise() {
    for (const auto& port : std::exchange(silenced_, {})) Raise(port);
  }

 private:
  void Silence(const std::string& port, const std::vector<LinkRow>& links) {
    const bool isUp = std::any_of(links.begin(), links.end(), [&](const LinkRow& link) {
      return link.name == port && link.up;
    });
    if (!isUp) return;
    silenced_.push_back(port);
    setLinkUp(context_.operation, port, false);
  }
  /// A bond is gone by then, if all went well.
  void Raise(const std::string& port) const try {
    if (if_nametoindex(port.c_str()) != 0) setLinkUp(context_.operation, port, true);
  } catch (const HostCtlException& error) {
    syslog(LOG_USER | LOG_ERR, "%s", error.what());
  }

  const ChangeContext& context_;
  std::vector<std::string> silenced_;
};

}  // namespace

SwitchEditor::SwitchEditor(const Files& files, ChangeContext context)
    : files_(files),
      own_(files),
      context_(std::move(context)),
      lock_(own_.Lock()),
      before_(readSwitchFiles(own_)),
      after_(before_) {
  const std::string note = lock_.Note();
  if (note.empty()) return;
  equal_ = OwnFiles::Equal::Unheard;
  Finish(note);
  lock_.SetNote(noteOf({}, {}));
}

/// What cannot be finished is not tried again, so that it stands in no later change's way.
void SwitchEditor::Finish(const std::string& note) const try {
  const auto left = leftOf(note, readLinks(context_.operation), before_);
  for (const auto& device : left.devices)
    syslog(LOG_USER | LOG_INFO, "%s is deleted: a change had begun to", device.c_str());
  for (const auto& uplink : left.uplinks)
    syslog(LOG_USER | LOG_INFO, "%s is given back: a change had begun to", uplink.nic.c_str());
  deleteDevices(files_, context_, left.devices);
  releaseNics(context_, left.uplinks);
} catch (const HostCtlException& error) {
  syslog(LOG_USER | LOG_ERR, "%s", error.what());
}

void SwitchEditor::NoteLosses(const Switches& from, const Switches& to) const {
  lock_.SetNote(
      noteOf({lostDevices(from, to), uplinksGivenBack(from, to)}, readLinks(context_.operation)));
}

void SwitchEditor::Refuse(const std::string& cause) const {
  throw HostCtlException(context_.operation, context_.object, cause);
}

Switch& SwitchEditor::SwitchNamed(const std::string& name) {
  if (Switch* found = findSwitch(after_, name)) return *found;
  Refuse("there is no standard switch " + name);
}

std::string SwitchEditor::NicNamed(const std::string& pnic) {
  if (auto nic = kernelNamed(physicalNics(files_), pnic); !nic.empty()) return nic;
  if (switchWithUplink(after_, pnic)) return pnic;
  Refuse("there is no adapter " + pnic);
}

SwitchUplink SwitchEditor::NewUplink(const std::string& nic) const {
  const NicUses uses(files_, own_, before_, context_.operation);
  if (const auto use = uses.Of(nic); !use.empty()) Refuse(nic + " " + use);
  for (const LinkRow& link : readLinks(context_.operation))
    if (link.name == nic)
      return {nic, link.permanentAddress.empty() ? link.address : link.permanentAddress, true};
  Refuse("there is no interface " + nic);
}

std::vector<std::string> SwitchEditor::FreeNics() const {
  const NicUses uses(files_, own_, before_, context_.operation);
  std::vector<std::string> free;
  std::string taken;
  for (const auto& [name, nic] : physicalNics(files_)) {
    const auto use = uses.Of(nic);
    if (use.empty()) free.push_back(nic);
    taken += (taken.empty() ? "" : ", ") + nic + " " + use;
  }
  if (free.empty()) Refuse(taken.empty() ? "this machine has no physical adapter" : taken);
  return free;
}

void SwitchEditor::DemandOwn(const std::string& device) const {
  if (devicesOf(before_).count(device) == 0 && files_.Exists("/sys/class/net/" + device))
    Refuse("there is an interface " + device + " that Kiva did not set up");
}

void SwitchEditor::DemandAbilities() const {
  for (const Switch& one : after_) {
    if (one.HasBond()) DemandOwn(one.BondName());
    const std::string bridge = "/sys/class/net/" + one.name + "/bridge";
    if (one.FiltersVlans() && files_.Exists(bridge) && !files_.Exists(bridge + "/vlan_filtering"))
      Refuse("this kernel's bridges cannot filter VLANs");
  }
  if (anyBond(after_) && !anyBond(before_) && !kernelHasBonding(context_.operation))
    Refuse("two uplinks need a bond, and this kernel has no bonding");
}

bool SwitchEditor::Carry(std::vector<FileChange> changes,
                         const std::function<void()>& alsoSettled) {
  DemandAbilities();
  bool told = false;
  SilentPorts silent(context_);
  const auto takeOver = [&] {
    const bool back = std::exchange(told, true);
    const Switches &from = back ? after_ : before_, &to = back ? before_ : after_;
    if (back) NoteLosses(from, to);
    silent.Silence(from, to);
    reloadNetworkd(context_.operation, context_.object);
    settleSwitches(files_, context_, from, to, equal_);
    silent.Raise();
    if (!back && alsoSettled) alsoSettled();
    if (back) lock_.SetNote({});
  };
  NoteLosses(before_, after_);
  if (!areSettled(files_, before_, readLinks(context_.operation)))
    equal_ = OwnFiles::Equal::Unheard;
  const bool changed =
      own_.Change(context_.operation, context_.object, std::move(changes), takeOver, equal_);
  lock_.SetNote({});
  before_ = after_;
  return changed;
}

bool SwitchEditor::Apply(std::vector<FileChange> others, const std::function<void()>& alsoSettled) {
  auto changes = switchFilesFor(after_, own_);
  changes.insert(changes.end(), others.begin(), others.end());
  return Carry(std::move(changes), alsoSettled);
}

void SwitchEditor::ApplyAfresh(std::vector<FileChange> files) {
  const Files nothing("/nonexistent");
  const auto switchFiles = switchFilesFor(after_, OwnFiles(nothing));
  files.insert(files.end(), switchFiles.begin(), switchFiles.end());
  for (const auto& name : own_.List()) {
    const auto named = [&](const FileChange& change) { return change.name == name; };
    if (std::none_of(files.begin(), files.end(), named)) files.push_back({name, std::nullopt});
  }
  Carry(std::move(files), {});
}

}  // namespace HostLinux
