// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostseam/tool_host.h"
#include "linux/files.h"

namespace HostLinux {

/// The host's services by the names that the console knows them by (HaloShell, SSH, ovl-opsagent),
/// which are systemd's units here. What cannot be done throws HostCtlException.
HostSeam::ServiceState readServiceState(const Files& files, const std::string& name);
void setServiceRunning(const Files& files, const std::string& name, bool running);
bool readServiceEnabled(const Files& files, const std::string& name);
void setServiceEnabled(const Files& files, const std::string& name, bool enabled);

/// The management agents: the units listed in /etc/corvo/agents.
std::vector<HostSeam::Agent> readAgents(const Files& files);
void setAgentsRunning(const Files& files, bool running);

}  // namespace HostLinux
