// SPDX-License-Identifier: MIT
#include "hosttools/ovl_agent.h"

#include <array>
#include <cstdlib>

#include "hosttools/options.h"

namespace HostTools {

using HostSeam::ServiceState;

ToolAnswer runInitScript(ToolHost& host, const std::string& service, std::string_view action) {
  const ServiceState state = host.GetServiceState(service);
  const bool running = state == ServiceState::Running;
  if (state == ServiceState::Absent)
    return {127, "", "sh: /etc/init.d/" + service + ": not found\n"};
  if (action == "status")
    return {running ? 0 : 3, service + (running ? " is running\n" : " is not running\n"), ""};
  if (action == "stop" && !running) return {1, service + " is not running\n", ""};
  host.SetServiceRunning(service, action == "start");
  return {0, service + (action == "start" ? " started\n" : " stopped\n"), ""};
}

ToolAnswer checkOvlAgentVersion(ToolHost& host) {
  const std::string version = host.FindPackageVersion(kOvlAgent).value_or("");
  return {std::atoi(version.c_str()) < 3 ? 1 : 0, "", ""};
}

ToolAnswer ovlcfgVswitch(ToolHost& host, Arguments arguments) {
  if (arguments.empty() || arguments[0] != "-m")
    return {1, "", "ovlcfg-vswitch: expected -m -p INTERFACE -I SWITCH\n"};
  const auto values = readOptions(arguments.subspan(1), std::array{"-p", "-I"});
  if (host.GetServiceState(kOvlAgent) != ServiceState::Running)
    return {1, "", "ovlcfg-vswitch: ovl-opsagent is not running\n"};
  host.MoveKernelNic(values.at("-p"), values.at("-I"));
  return {};
}

}  // namespace HostTools
