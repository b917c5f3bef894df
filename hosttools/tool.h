// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hostseam/tool_host.h"

namespace HostTools {

using HostSeam::ToolAnswer;
using HostSeam::ToolHost;

/// A tool's argument vector without its name.
using Arguments = std::span<const std::string>;

/// One of the host's command-line tools: the paths at which it is called, separated by blanks, what
/// --help prints, and what it does.
struct Tool {
  std::string_view paths;
  std::string_view help;
  ToolAnswer (*run)(ToolHost& host, Arguments arguments);
};

/// Every tool that there is.
std::span<const Tool> allTools();

/// Runs the tool at `path` with its whole argument vector, its name first. A path without a tool
/// answers 127, as a shell does; a change that the host refuses answers 1 with the reason.
ToolAnswer runTool(ToolHost& host, const std::string& path, const std::vector<std::string>& vector);

ToolAnswer hmxCmd(ToolHost& host, Arguments arguments);
ToolAnswer halocli(ToolHost& host, Arguments arguments);
ToolAnswer openssl(ToolHost& host, Arguments arguments);
ToolAnswer sshKeygen(ToolHost& host, Arguments arguments);
ToolAnswer powerOffVms(ToolHost& host, Arguments arguments);
ToolAnswer ovlcfgVswitch(ToolHost& host, Arguments arguments);
ToolAnswer shell(ToolHost& host, Arguments arguments);

}  // namespace HostTools
