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
  /// Deletes first what devices a change left that was killed when it had begun to delete them.
  SwitchEditor(const Files& files, ChangeContext context);
  ~SwitchEditor() { lock_.SetNote({}); }
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
  /// The same, with all that stood in our files forgotten, whatever it was about.
  void ApplyAfresh(std::vector<FileChange> files);

  /// Ends the change with this cause.
  [[noreturn]] void Refuse(const std::string& cause) const;

 private:
  void DeleteLeftDevices() const;
  void NoteLostDevices(const Switches& from, const Switches& to) const;
  void DemandAbilities() const;
  bool Carry(std::vector<FileChange> changes, const std::function<void()>& alsoSettled);

  const Files& files_;
  OwnFiles own_;
  ChangeContext context_;
  NetworkLock lock_;
  Switches before_;
  Switches after_;
};

}  // namespace HostLinux
