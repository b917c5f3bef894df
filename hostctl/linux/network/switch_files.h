// SPDX-License-Identifier: MIT
#pragma once

#include "linux/network/own_files.h"
#include "linux/network/switch_model.h"

namespace HostLinux {

/// The switches that our files describe, in natural order. What networkd has no key for stands in
/// sections that it passes over: [X-Kiva] says which kind of file it is, the uplinks' order and own
/// hardware addresses, and which port group an interface is on; every [X-Kiva-PortGroup] of a
/// switch's `.netdev` file is a port group.
Switches readSwitchFiles(const OwnFiles& own);

/// Every file that `switches` need, with what else stands in it, and without a text those that they
/// need no more. An interface's own `.network` file holds its IP configuration and is none of them.
std::vector<FileChange> switchFilesFor(const Switches& switches, const OwnFiles& own);

}  // namespace HostLinux
