// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/tool_host.h"

namespace HostLinux {

/// Stop this machine's virtual machines, through libvirt, within a bounded time: those that its
/// autostart manages, in autostart order; or every running one. A machine without virtualisation
/// has none. Throw HostCtlException when a virtualisation service is there and does not do it.
void stopManagedMachines();
void powerOffMachines(HostSeam::MachineStop how);

}  // namespace HostLinux
