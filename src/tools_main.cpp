// SPDX-License-Identifier: MIT
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "hosttools/program.h"
#include "linux/linux_host.h"
#include "linux/tools/linux_tool_host.h"

int main(int argc, char** argv) try {
  const std::vector<std::string> words(argv, argv + argc);
  HostLinux::useLinuxHost();
  HostLinux::LinuxToolHost host;
  return HostTools::runProgram(host, words.empty() ? "" : words.front(),
                               {words.begin() + (words.empty() ? 0 : 1), words.end()});
} catch (const std::exception& error) {
  std::fprintf(stderr, "kiva-tools: %s\n", error.what());
  return 1;
}
