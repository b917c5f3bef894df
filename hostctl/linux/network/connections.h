// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "hostctl/network/nic.h"
#include "linux/files.h"
#include "linux/network/ovsdb.h"
#include "linux/network/switch_model.h"

namespace HostLinux {

/// What the kernel interface `name` is connected to: an interface of one of our switches to its
/// port group; one on a bridge of Open vSwitch that has a controller to that distributed switch
/// (whose name is unknown while the database does not answer); every other (macvtap, a virtual
/// function, a network of somebody else's making) to an opaque network.
HostCtl::Network::ConnectionPoint connectionOf(const std::string& name, const Switches& switches,
                                               const std::optional<OvsInterfaces>& ovs,
                                               const Files& files);

}  // namespace HostLinux
