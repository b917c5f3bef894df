// SPDX-License-Identifier: MIT
#include "core/pid_file.h"

#include <signal.h>
#include <unistd.h>

#include <fstream>

#include "core/log.h"
#include "hostctl/lib/platform.h"

namespace Kiva {

namespace {

constexpr const char* kPidFile = "/var/run/kiva.pid";

bool namesLiveProcess(const std::string& path) {
  pid_t pid = 0;
  return std::ifstream(path) >> pid && pid > 0 && kill(pid, 0) == 0;
}

}  // namespace

void writePidFile() {
  const std::string path = HostCtl::Lib::platform().HostPath(kPidFile);
  if (namesLiveProcess(path)) {
    logError("Attempt to run multiple KIVA instances, not updating %s", kPidFile);
    return;
  }
  std::ofstream(path, std::ios::trunc) << getpid() << std::flush;
}

}  // namespace Kiva
