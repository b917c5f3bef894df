// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hostseam/tool_host.h"
#include "linux/files.h"

namespace HostLinux {

/// The host's services by the names that the console knows them by (HaloShell, SSH, ovl-opsagent),
/// which are systemd's units here. What cannot be done throws HostCtlException.
///
/// HaloShell, the login shells on virtual terminals 2 to 6, is halo-shell.service: systemd starts
/// no login there while that unit is stopped. SSH runs as ssh.service or, where an administrator
/// chose so, behind ssh.socket; both are stopped and disabled together.
HostSeam::ServiceState readServiceState(const std::string& name);
void setServiceRunning(const std::string& name, bool running);
void setServiceEnabled(const std::string& name, bool enabled);

/// The management agents: those of the units in /etc/corvo/agents, or of the usual ones without
/// that file, which are installed. They are stopped and started in that order, all at once.
std::vector<HostSeam::Agent> readAgents(const Files& files);
void setAgentsRunning(const Files& files, bool running);

/// The units that such a file names, one a line, comments after "#". What cannot be the name of a
/// unit is left out.
std::vector<std::string> parseAgents(std::string_view text);

}  // namespace HostLinux
