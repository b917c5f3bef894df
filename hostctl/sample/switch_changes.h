// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hostseam/network.h"
#include "sample/store.h"

namespace HostSample {

// The changes of host.json's standard switches and port groups. Each throws HostCtlException when
// the host as it is then does not allow it, with the file as it was; the check and the change are
// one step for all users of the file, which is not written where nothing differs.

void addSwitch(Store& store, const std::string& name);
void addPortGroup(Store& store, const std::string& name, const std::string& switchName);

/// Both refuse what a kernel NIC is on.
void removeSwitch(Store& store, const std::string& name);
void removePortGroup(Store& store, const std::string& name, const std::string& switchName);

/// An adapter that is free.
void addUplink(Store& store, const std::string& pnic, const std::string& switchName);
/// One that the switch has.
void removeUplink(Store& store, const std::string& pnic, const std::string& switchName);

/// These two make it so, whichever switch the adapter is on. An adapter that a switch loses is no
/// active uplink of its port groups any more.
void takeUplink(Store& store, const std::string& pnic, const std::string& switchName);
void dropUplink(Store& store, const std::string& pnic, const std::string& switchName);

/// Uplinks of the port group's switch.
void setActiveUplinks(Store& store, const HostSeam::PortGroupName& portGroup,
                      const std::vector<std::string>& pnics);
void setVlanId(Store& store, const HostSeam::PortGroupName& portGroup, std::int16_t vlanId);

}  // namespace HostSample
