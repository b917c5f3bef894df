// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <vector>

#include "linux/files.h"
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

/// Deletes them, those that there are, and waits until networkd knows.
void deleteDevices(const Files& files, const ChangeContext& context,
                   const std::set<std::string>& devices);

/// Has the kernel's links follow when the switches change from `before` to `after`, whose files
/// networkd has been told of: does what networkd leaves undone (it deletes no device, releases no
/// NIC whose file is gone, takes no VLAN away) and waits until it has done the rest. Throws
/// HostCtlException, after ten seconds at most.
void settleSwitches(const Files& files, const ChangeContext& context, const Switches& before,
                    const Switches& after);

}  // namespace HostLinux
