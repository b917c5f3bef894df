// SPDX-License-Identifier: MIT
#pragma once

#include "hosttools/tool.h"

namespace HostTools {

inline constexpr const char* kOvlAgent = "ovl-opsagent";

/// What the init script of `service` answers to "start", "stop" and "status". Statuses are those of
/// init scripts: 3 for a service that is stopped, 127 for one that is not installed. A stop of what
/// is not running fails.
ToolAnswer runInitScript(ToolHost& host, const std::string& service, std::string_view action);

/// Status 0 when the agent's installed version has a major number of 3 or more.
ToolAnswer checkOvlAgentVersion(ToolHost& host);

}  // namespace HostTools
