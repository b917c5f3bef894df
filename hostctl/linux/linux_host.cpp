// SPDX-License-Identifier: MIT
#include "linux/linux_host.h"

#include "linux/driver.h"
#include "linux/platform.h"

namespace HostLinux {

void useLinuxHost() {
  HostSeam::useHost(std::make_unique<LinuxPlatform>(), std::make_unique<LinuxDriver>());
}

}  // namespace HostLinux
