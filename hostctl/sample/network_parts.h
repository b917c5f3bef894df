// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostseam/network.h"
#include "sample/host_state.h"

namespace HostSample {

// The parts of host.json's `network` by their names, for those who change them. What is not there
// is a HostCtlException that says so.

Json& nicNamed(Json& network, const std::string& name);
Json& switchNamed(Json& network, const std::string& name);
Json& portGroupNamed(Json& network, const HostSeam::PortGroupName& wanted);
Json& distributedSwitchNamed(Json& network, const std::string& name);

/// Where an interface is plugged in.
void plugIn(Json& nic, const char* type, const HostSeam::PortGroupName& where);
/// Takes away the ports of distributed switches that the interface is on.
void leavePorts(Json& network, const std::string& nic);

bool isUndistributed(const Json& network, const std::string& pnic);
/// An adapter that there is and that no distributed switch has; the second also no standard one.
void requireUndistributed(Json& network, const std::string& pnic);
void requireFree(Json& network, const std::string& pnic);

}  // namespace HostSample
