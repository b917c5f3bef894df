// SPDX-License-Identifier: MIT
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "hosttools/program.h"
#include "sample/sample_tool_host.h"

namespace {

constexpr int kUsage = 2;

constexpr const char* kHelp =
    "kiva-demo-tools --host DIR PATH ARGUMENT...: the tool that the sample host in DIR has at "
    "PATH.\n"
    "NAME --host DIR ARGUMENT...: the same, through a link to kiva-demo-tools named like the "
    "tool.\n"
    "kiva-demo-tools --host DIR --help: every tool.\n";

}  // namespace

int main(int argc, char** argv) try {
  const std::vector<std::string> words(argv, argv + argc);
  if (words.size() == 2 && words[1] == "--help") return std::fputs(kHelp, stdout) < 0 ? 1 : 0;
  if (words.size() < 3 || words[1] != "--host") {
    std::fputs("kiva-demo-tools: expected --host DIR PATH ARGUMENT..., or --help\n", stderr);
    return kUsage;
  }
  HostSample::SampleToolHost host(words[2]);
  return HostTools::runProgram(host, words[0], {words.begin() + 3, words.end()});
} catch (const std::exception& error) {
  std::fprintf(stderr, "kiva-demo-tools: %s\n", error.what());
  return kUsage;
}
