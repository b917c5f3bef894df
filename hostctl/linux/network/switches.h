// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostseam/network.h"
#include "linux/files.h"
#include "linux/network_tables.h"

namespace HostLinux {

// The host's standard switches as the driver and the tools see and change them. Adapters go by
// their names of the console (pnic0). Changes are in force when they return, and throw
// HostCtlException with the host as it was; where nothing is to change, nothing is touched.

/// A switch has one teaming order, which all its port groups show.
std::vector<HostSeam::SwitchRecord> readSwitches(const Files& files);

/// The physical NICs, those of our switches with the name of the switch. The MAC address is the
/// adapter's own, from the kernel in `links` where that knows it, else from our files.
std::vector<HostCtl::Network::PnicRecord> readPnics(const Files& files,
                                                    const std::vector<LinkRow>& links);

/// Brings in force what our files say where a change was killed, or failed as well as its way back.
void finishKilledChange(const Files& files, const std::string& operation, const std::string& pnic);
/// The adapter becomes the last active uplink. One that another switch has is taken from there.
/// False where the switch has it already and all is in force.
bool addUplink(const Files& files, const std::string& switchName, const std::string& pnic);
/// Refused where somebody else would have the uplink that is given back, so that no switch would
/// get it again.
void removeUplink(const Files& files, const std::string& switchName, const std::string& pnic);
/// Makes `pnics` the active uplinks of the whole switch, in this order; its others stay idle.
void writeActiveUplinks(const Files& files, const HostSeam::PortGroupName& group,
                        const std::vector<std::string>& pnics);
void writeVlanId(const Files& files, const HostSeam::PortGroupName& group, int vlanId);
/// An interface of ours gets this address, and no uplink keeps it.
void writeMacAddress(const Files& files, const std::string& nic, const std::string& macAddress);

void addStandardSwitch(const Files& files, const std::string& name);
void addPortGroup(const Files& files, const std::string& name, const std::string& switchName);
/// Both refuse what an interface is on.
void removeStandardSwitch(const Files& files, const std::string& name);
void removePortGroup(const Files& files, const std::string& name, const std::string& switchName);

/// Moves an interface with its addresses: one of ours from its port group, one of Open vSwitch's
/// from its bridge. One on an opaque network is refused.
void moveNic(const Files& files, const std::string& nic, const HostSeam::PortGroupName& group);

/// Forgets the network that our files describe, after a copy of it was made.
void clearNetwork(const Files& files);
/// Makes the network that a fresh host has, in the place of what our files describe: vSwitch0 with
/// the first adapter that has a link (the first of all where none has one within ten seconds), the
/// port group "Management Network" and on it tarn0, with that adapter's MAC address and an IPv4
/// address by DHCP.
void autoConfigureNetwork(const Files& files);

}  // namespace HostLinux
