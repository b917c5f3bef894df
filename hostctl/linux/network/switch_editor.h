// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "linux/files.h"
#include "linux/network/own_files.h"
#include "linux/network/switch_settle.h"
#include "linux/network_tables.h"

namespace HostLinux {

/// One change of the host's standard switches: as long as it lives nobody else changes the network.
/// What is changed in its switches is on the host after Apply. Everything throws HostCtlException
/// of the context.
class SwitchEditor {
 public:
  /// Does first what a change left that was killed, or that failed as well as its way back: deletes
  /// the devices and gives the uplinks back that it had begun to. What of that fails is logged.
  SwitchEditor(const Files& files, ChangeContext context);
  SwitchEditor(const SwitchEditor&) = delete;
  SwitchEditor& operator=(const SwitchEditor&) = delete;

  const ChangeContext& Context() const { return context_; }
  const OwnFiles& Own() const { return own_; }
  Switches& All() { return after_; }
  Switch& SwitchNamed(const std::string& name);
  /// The kernel's name of a physical adapter ("pnic0"). An uplink that the machine has no more goes
  /// by the kernel's name itself.
  std::string NicNamed(const std::string& pnic);
  /// An uplink with the adapter's own hardware address. Throws for a NIC that somebody else has.
  SwitchUplink NewUplink(const std::string& nic) const;
  /// The physical adapters, by the kernel's names, that nobody else has. Throws where there is
  /// none, and says who has each.
  std::vector<std::string> FreeNics() const;
  /// Throws where there is a device of this name that Kiva did not set up: it would be changed, and
  /// deleted later.
  void DemandOwn(const std::string& device) const;

  /// Writes the switches' files and `others`, has networkd take them over and waits until the links
  /// are as they say; `alsoSettled` waits for what else there is to wait for. Where the kernel
  /// lacks what the switches need, nothing is written; when anything fails the host is as it was.
  /// Where files and links are so already, nothing is touched, and it says false.
  bool Apply(std::vector<FileChange> others = {}, const std::function<void()>& alsoSettled = {});
  /// Does what Apply does where a change was killed that had begun.
  void ApplyLeft() {
    if (equal_ == OwnFiles::Equal::Unheard) Apply();
  }
  /// The same, with all that stood in our files forgotten, whatever it was about.
  void ApplyAfresh(std::vector<FileChange> files);

  /// Ends the change with this cause.
  [[noreturn]] void Refuse(const std::string& cause) const;

 private:
  void Finish(const std::string& note) const;
  void NoteLosses(const Switches& from, const Switches& to) const;
  void DemandAbilities() const;
  bool Carry(std::vector<FileChange> changes, const std::function<void()>& alsoSettled);

  const Files& files_;
  OwnFiles own_;
  ChangeContext context_;
  NetworkLock lock_;
  Switches before_;
  Switches after_;
  OwnFiles::Equal equal_ = OwnFiles::Equal::InForce;
};

}  // namespace HostLinux
