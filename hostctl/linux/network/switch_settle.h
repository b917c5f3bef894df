// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <vector>

#include "linux/files.h"
#include "linux/network/own_files.h"
#include "linux/network/switch_model.h"
#include "linux/network_tables.h"

namespace HostLinux {

/// Which change asks, for the text of an exception.
struct ChangeContext {
  std::string operation;
  std::string object;
};

/// The first link that is not yet as `switches` say; empty when all are. A NIC that the machine
/// does not have (any more) is waited for by nobody.
std::string unsettledLink(const Switches& switches, const std::vector<LinkRow>& links);

/// Whether all are, and each bridge looks at VLANs as it shall; not which ones its ports have.
bool areSettled(const Files& files, const Switches& switches, const std::vector<LinkRow>& links);

/// The uplinks of `before` that are none in `after`.
std::vector<SwitchUplink> uplinksGivenBack(const Switches& before, Switches after);
/// Gives NICs back as they were before a switch had them. An address that is right is not set:
/// some drivers have to put the link down for it.
void releaseNics(const ChangeContext& context, const std::vector<SwitchUplink>& uplinks);

/// Deletes them, those that there are, and waits until networkd knows.
void deleteDevices(const Files& files, const ChangeContext& context,
                   const std::set<std::string>& devices);

/// Has the kernel's links follow when the switches change from `before` to `after`, whose files
/// networkd has been told of: does what networkd leaves undone (it deletes no device, releases no
/// NIC whose file is gone, takes no VLAN away) and waits until it has done the rest. Where `before`
/// may never have been in force all VLANs are set. Throws HostCtlException, after ten seconds at
/// most.
void settleSwitches(const Files& files, const ChangeContext& context, const Switches& before,
                    const Switches& after, OwnFiles::Equal equal);

}  // namespace HostLinux
