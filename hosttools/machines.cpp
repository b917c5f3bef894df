// SPDX-License-Identifier: MIT
#include "hosttools/tool.h"

namespace HostTools {

using HostSeam::MachineStop;

ToolAnswer powerOffVms(ToolHost& host, Arguments arguments) {
  for (const std::string& argument : arguments)
    if (argument != "--terminate")
      return {1, "", "powerOffVms: unknown argument " + argument + "\n"};
  host.PowerOffMachines(arguments.empty() ? MachineStop::Ask : MachineStop::Terminate);
  return {};
}

}  // namespace HostTools
