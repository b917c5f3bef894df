// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

#include "linux/files.h"
#include "linux/network/ovs_model.h"
#include "linux/network/own_files.h"
#include "linux/network/switch_model.h"
#include "linux/network_tables.h"

namespace HostLinux {

/// Who else has the machine's adapters, as it was found when this was made: a switch that takes one
/// would cut its user off. For the changes that make an adapter an uplink. Addresses that the
/// kernel gives by itself, link-local ones and those of a router's advertisement, are no use; what
/// Kiva set up is nobody else's.
class NicUses {
 public:
  /// Open vSwitch cannot have an uplink of ours, so its database may be broken then.
  enum class OpenVswitch { Asked, Unasked };

  /// Throws HostCtlException of `operation` where the kernel or Open vSwitch does not tell.
  /// `files` and `own` outlive it.
  NicUses(const Files& files, const OwnFiles& own, const Switches& switches,
          const std::string& operation, OpenVswitch openVswitch = OpenVswitch::Asked);

  /// In words that follow the adapter's name; empty for nobody.
  std::string Of(const std::string& nic) const;
  /// The file or manager of others that configures it, or will when Kiva's file for it is gone;
  /// empty for none.
  std::string ManagerOf(const std::string& nic) const;

 private:
  std::string UserAbove(const std::string& nic) const;
  std::string AddressOf(const std::string& nic) const;

  const Files& files_;
  const OwnFiles& own_;
  std::set<std::string> ours_;
  OvsBridges bridges_;
  NetworkTables tables_;
};

}  // namespace HostLinux
