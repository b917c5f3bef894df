// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace HostLinux {

// Open vSwitch's database as far as distributed switches are about it. Records go by their
// identifiers. `settings` are what somebody configured in a record, each as ovs-vsctl takes it
// ("tag=20"), so that a record can be made again.

/// `type` is "internal" for a device that Open vSwitch makes itself.
struct OvsInterface {
  std::string id;
  std::string name;
  std::string type;
  std::vector<std::string> settings;
};

/// Several interfaces are a bond. An isolated ("protected") port exchanges nothing with others of
/// its kind. Tag 0 is none.
struct OvsPort {
  std::string id;
  std::string name;
  int tag = 0;
  bool isolated = false;
  std::map<std::string, std::string> externalIds;
  std::vector<OvsInterface> interfaces;
  std::vector<std::string> settings;
};

struct OvsBridge {
  std::string id;
  std::string name;
  /// With a controller it is a distributed switch.
  bool controlled = false;
  std::map<std::string, std::string> externalIds;
  std::vector<OvsPort> ports;
};

using OvsBridges = std::vector<OvsBridge>;

/// What the database is asked for, and what its answer says; nothing for a text that is no answer
/// to that. A column that an older database lacks is empty.
extern const char* const kOvsQuestion;
std::optional<OvsBridges> ovsBridgesIn(const std::string& answer);

/// The interfaces that Open vSwitch has on its bridges, by their names, with the name of the
/// bridge; an empty one where the bridge has no controller, so that it is no distributed switch's.
using OvsInterfaces = std::map<std::string, std::string>;
OvsInterfaces ovsInterfacesOf(const OvsBridges& bridges);

/// Where an interface is. The pointers are into what was searched.
struct OvsPlace {
  const OvsBridge* bridge = nullptr;
  const OvsPort* port = nullptr;
  const OvsInterface* interface = nullptr;
  explicit operator bool() const { return interface != nullptr; }
};
OvsPlace findOnOvs(const OvsBridges& bridges, const std::string& interface);

}  // namespace HostLinux
