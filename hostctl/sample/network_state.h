// SPDX-License-Identifier: MIT
#pragma once

#include "sample/host_state.h"
#include "sample/json_node.h"

namespace HostSample {

/// The `network` part of host.json. Which switch a physical adapter belongs to follows from the
/// switches' uplinks; the file does not say it twice.
void readNetworkState(const JsonNode& network, HostState& state);

}  // namespace HostSample
