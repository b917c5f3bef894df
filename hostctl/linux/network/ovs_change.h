// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <vector>

#include "linux/network/ovs_model.h"
#include "linux/network/switch_settle.h"

namespace HostLinux {

/// One change of Open vSwitch's database: nothing of it or all of it. Verbs collect what it does;
/// nothing is done before Commit. Texts of `settings` are ovs-vsctl's ("tag=20").
class OvsChange {
 public:
  using Settings = std::vector<std::string>;

  /// A new port of the bridge for an interface that there is, or for a new one.
  void AddPort(const OvsBridge& bridge, const std::string& name, const Settings& settings,
               const OvsInterface& interface);
  void AddPortWithNew(const OvsBridge& bridge, const std::string& name, const Settings& settings,
                      const std::string& interface, const Settings& interfaceSettings);
  /// A new interface on a port that there is.
  void AddInterface(const OvsPort& port, const std::string& interface, const Settings& settings);
  /// The interfaces that no other port has got meanwhile go with it.
  void RemovePort(const OvsBridge& bridge, const OvsPort& port);
  void RemoveInterface(const OvsPort& port, const OvsInterface& interface);
  void Set(const char* table, const std::string& id, const Settings& settings);
  void Clear(const char* table, const std::string& id, const std::string& column);
  void RemoveExternalId(const char* table, const std::string& id, const std::string& key);

  /// Returns when Open vSwitch works by it. Throws HostCtlException; when that was only too slow
  /// the change stays in the database.
  void Commit(const ChangeContext& context) const;
  /// For a way back: a failure is logged, and false.
  bool CommitAnyway(const ChangeContext& context) const noexcept;

 private:
  void Add(Settings words);
  void Create(const std::string& interface, const Settings& settings);

  Settings words_;
};

/// A text as a value of ovs-vsctl.
std::string ovsValue(const std::string& text);

/// The interfaces that are blocked (do not receive, or are forwarded nothing), as "ovs-ofctl
/// dump-ports-desc" tells of a bridge.
std::set<std::string> blockedInterfacesIn(const std::string& portDescriptions);
/// Throws HostCtlException.
std::set<std::string> blockedInterfaces(const ChangeContext& context, const std::string& bridge);
enum class Blocking { Off, On };
void setBlocking(const ChangeContext& context, const std::string& bridge,
                 const std::string& interface, Blocking blocking);

}  // namespace HostLinux
