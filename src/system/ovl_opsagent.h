// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace Kiva {

// The network-virtualisation agent, which has to stand still while a management interface moves
// between switches, and whose tool can move one that it owns itself.

/// Runs the agent's tool and logs how it ended.
int RunOvlCommand(const std::string& path, const std::vector<std::string>& arguments);

/// True when the agent was stopped; hand that to StartOvlOpsAgent, so that an agent that was not
/// running, or did not stop, is never started by the console.
bool StopOvlOpsAgent();
void StartOvlOpsAgent(bool wasStopped);

bool IsOvlOpsAgentPresent();
bool IsOvlOpsAgentVersion3OrLater();
/// Present, and then of version 3 or later.
bool IsOvlOpsAgentUsable();

/// Moves `interfaceName` to `switchName` with the agent's own tool; true on success.
bool MigrateWithOvlCfgVswitch(const std::string& interfaceName, const std::string& switchName);

}  // namespace Kiva
