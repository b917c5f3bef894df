// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "linux/files.h"
#include "linux/network/ini_file.h"
#include "linux/network_tables.h"

namespace HostLinux {

/// A message of the kernel's, whole; it can be sent back.
using KernelMessage = std::vector<char>;

/// What the kernel has about an interface whose device is about to go and to come again: whether it
/// is up, its addresses and its routes. Temporary addresses, and routes that the kernel makes or a
/// router advertises, come by themselves. A route by the number of a next hop becomes one by what
/// that stands for, which the kernel says unless it was told not to (nexthop_compat_mode).
class InterfaceState {
 public:
  /// Throws HostCtlException of `operation`. `files` outlives it.
  InterfaceState(const Files& files, std::string operation, std::string interface);

  /// As it was.
  const LinkRow& Link() const { return link_; }
  /// Gives all that to the device that has the interface's name by now; what it has already stays.
  /// Where networkd has a file for the interface, that is left to it, for ten seconds at most.
  void PutBack() const;
  /// Adds to a `.network` file the addresses and routes that do not stand there.
  void WriteInto(IniFile& file) const;

 private:
  bool HasAddresses() const;

  const Files& files_;
  std::string operation_;
  std::string interface_;
  LinkRow link_;
  bool networkdHasIt_ = false;
  std::vector<AddressRow> lasting_;
  std::vector<KernelMessage> addresses_;
  std::vector<KernelMessage> routes_;
};

}  // namespace HostLinux
