// SPDX-License-Identifier: MIT
#include "linux/running_machines.h"

#include <syslog.h>

#include "hostctl/lib/exception.h"
#include "linux/machines_module.h"

namespace HostLinux {

bool hasRunningMachines(const Files& files, std::chrono::milliseconds limit) try {
  const MachinesService service(files, "HasRunningVirtualMachines");
  const auto count = service.Find<CountMachinesFunction>(kCountMachinesSymbol);
  void* connection = count ? service.Open(limit) : nullptr;
  if (!connection) return false;
  const auto counted = service.Ask<CountedMachines>(
      limit, [=](CountedMachines& answer) { count(connection, answer); });
  return counted.running > 0;
} catch (const HostCtl::Lib::HostCtlException& error) {
  syslog(LOG_USER | LOG_ERR, "Whether virtual machines run: %s", error.what());
  return true;
}

}  // namespace HostLinux
