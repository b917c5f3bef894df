// SPDX-License-Identifier: MIT
#include "console/console.h"
#include "linux/linux_host.h"

int main(int argc, char** argv) {
  HostLinux::useLinuxHost();
  return Kiva::runConsole({.virtualTerminal = argc > 1 ? argv[1] : nullptr});
}
