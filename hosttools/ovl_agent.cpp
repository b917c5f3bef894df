// SPDX-License-Identifier: MIT
#include <array>

#include "hosttools/service_names.h"
#include "hosttools/tools.h"

namespace HostTools {

namespace {

using HostSeam::ServiceState;

ToolAnswer moveInterface(StandInHost& host, const Call& call) {
  if (host.GetServiceState(kOvlAgent) == ServiceState::Absent)
    return {1, "", call.name + ": ovl-opsagent is not installed\n"};
  host.MoveKernelNic(call["-p"], call["-I"]);
  return {};
}

constexpr std::array<Command<StandInHost>, 1> kMove = {{
    {"-m -p INTERFACE -I SWITCH", "moves a kernel interface to a switch", Effect::Changes,
     moveInterface},
}};

}  // namespace

constinit const Tool<StandInHost> kOvlcfgVswitch = {
    "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch",
    "Stands in for the network-virtualisation agent's.\n", 60, kMove};

}  // namespace HostTools
