// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hostctl/network/nic.h"

namespace Kiva {

// The way of windows and dialogs to the interface that carries management traffic, and to the
// switch that it hangs on. A host that fails an operation is logged here; callers see no
// host-control exception but where they ask for it, and one: the port group of an interface that is
// not on a standard switch is HostCtlException "Unsupported vSwitch type".

/// The management interface as it is now, or null when the host has none or cannot say.
std::unique_ptr<HostCtl::Network::TarnNic> findManagementInterface();
/// The same for who needs one: that there is none is logged.
std::unique_ptr<HostCtl::Network::TarnNic> requireManagementInterface();
/// The same for who tells the operator why there is none: throws HostCtlException with the reason.
std::unique_ptr<HostCtl::Network::TarnNic> readManagementInterface();
inline constexpr const char* kNoManagementInterface =
    "Could not get a suitable management interface";

/// True when the management interface is a port of a distributed switch, which the console does not
/// configure.
bool isOnDistributedSwitch();

/// The standard or distributed switch that the interface hangs on; empty where that fails.
std::string getSwitchName(const HostCtl::Network::TarnNic& interface);

/// The port group's own settings. False where the host fails; no VLAN, no uplinks then.
bool getVlanId(const HostCtl::Network::TarnNic& interface, std::int16_t& vlanId);
bool setVlanId(const HostCtl::Network::TarnNic& interface, std::int16_t vlanId);
bool getMaxActiveUplinks(const HostCtl::Network::TarnNic& interface, int& number);
/// The active ones, the primary one first.
bool getUplinks(const HostCtl::Network::TarnNic& interface, std::vector<std::string>& uplinks);

/// What a question to the host came to: its answer, or else the text for the log.
template <typename Value>
struct Answer {
  std::optional<Value> value = {};
  std::string trouble = {};
};

/// The same two reads for who looks ahead and logs later. These throw nothing: a port group on the
/// wrong kind of switch is trouble like any other.
Answer<std::int16_t> readVlanId(const HostCtl::Network::TarnNic& interface);
Answer<std::vector<std::string>> readUplinks(const HostCtl::Network::TarnNic& interface);

/// Both change the switch and then the port group's teaming. An adapter that another standard
/// switch uses is taken from that one.
bool addUplink(const HostCtl::Network::TarnNic& interface, const std::string& pnic);
bool removeUplink(const HostCtl::Network::TarnNic& interface, const std::string& pnic);

}  // namespace Kiva
