// SPDX-License-Identifier: MIT
#include <cstdio>
#include <exception>

#include "linux/tools/configuration.h"

/// kiva-reset: started once at every start of the host by its unit, which keeps its output.
int main() try {
  if (HostLinux::applyReset(HostLinux::Files()))
    std::puts("The configuration is what the host was delivered with.");
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "kiva-reset: %s\n", error.what());
  return 1;
}
