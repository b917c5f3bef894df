// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include "hostseam/tool_host.h"
#include "linux/files.h"
#include "linux/machines_service.h"

namespace HostLinux {

/// How long libvirt may take to answer, and the machines, all together, to shut down.
struct MachineTimes {
  std::chrono::milliseconds answer = kMachinesAnswerWithin;
  std::chrono::milliseconds shutDown{120'000};
};

/// Stop this machine's virtual machines, through libvirt. A machine without libvirt, or on which
/// its daemon does not run, has none. HostCtlException names the machines that still run at the
/// end, or says that the daemon does not do its work.
///
/// The running machines that autostart manages are asked to shut down one after the other. Each is
/// waited for before the next is asked, but not longer than its share of the time that is left; in
/// the end all are waited for until the time is over. No machine's plug is pulled here.
void stopManagedMachines(const Files& files, const MachineTimes& times = {});
/// Every running machine is asked at once, and waited for; or has its plug pulled without asking.
/// Machines that do not shut down when asked are left running: an operator chose not to force them,
/// and the host's own shut-down comes next.
void powerOffMachines(const Files& files, HostSeam::MachineStop how,
                      const MachineTimes& times = {});

}  // namespace HostLinux
