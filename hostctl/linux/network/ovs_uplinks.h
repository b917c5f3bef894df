// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "linux/files.h"
#include "linux/network/ovs_change.h"
#include "linux/network/ovs_model.h"

namespace HostLinux {

// The physical adapters of a distributed switch, and which of them a port uses. Adapters go by the
// kernel's names here. A port that uses only some is isolated together with those uplinks that no
// such port uses; what it uses stands in its record, for the uplinks' isolation is all ports'.

/// Whether somebody else's software manages the switch.
bool isThirdParty(const OvsBridge& bridge);

/// The adapters among the interfaces of the port that this machine has.
std::vector<std::string> uplinksOf(const Files& files, const OvsPort& port);
std::vector<std::string> uplinksOf(const Files& files, const OvsBridge& bridge);

/// What a port uses; nothing where it uses all.
using UsedUplinks = std::optional<std::vector<std::string>>;
UsedUplinks usedUplinksOf(const OvsPort& port);
/// How that stands in a record of a port.
OvsChange::Settings settingsFor(const UsedUplinks& used);

/// Has `change` isolate the uplinks of the bridge as its ports ask for, when `replaced` goes and a
/// port that uses `used` comes. `back` is what undoes that.
void isolateUplinks(const Files& files, const OvsBridge& bridge, const OvsPort& replaced,
                    const UsedUplinks& used, OvsChange& change, OvsChange& back);

}  // namespace HostLinux
