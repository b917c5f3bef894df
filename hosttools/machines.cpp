// SPDX-License-Identifier: MIT
#include <array>

#include "hosttools/tools.h"

namespace HostTools {

namespace {

using HostSeam::MachineStop;

constexpr std::array<Command<ToolHost>, 1> kPowerOff = {{
    {"[--terminate]", "asks every running machine to shut down; --terminate does not ask",
     Effect::Changes,
     [](ToolHost& host, const Call& call) {
       host.PowerOffMachines(call.Has("--terminate") ? MachineStop::Terminate : MachineStop::Ask);
       return ToolAnswer{};
     }},
}};

}  // namespace

constinit const Tool<ToolHost> kPowerOffVms = {
    "/bin/powerOffVms /sbin/powerOffVms", "Powers off the virtual machines.\n", 600, kPowerOff};

}  // namespace HostTools
