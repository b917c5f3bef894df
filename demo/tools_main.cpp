// SPDX-License-Identifier: MIT
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "hosttools/tool.h"
#include "sample/sample_tool_host.h"

namespace {

constexpr int kUsage = 2;

int give(const HostSeam::ToolAnswer& answer) {
  std::fwrite(answer.output.data(), 1, answer.output.size(), stdout);
  std::fwrite(answer.error.data(), 1, answer.error.size(), stderr);
  return answer.status;
}

int printHelp() {
  std::puts(
      "kiva-demo-tools --host DIR PATH VECTOR...: the tool that the sample host in DIR has at "
      "PATH,\n"
      "run with the argument vector VECTOR, its name first. The tools:\n");
  for (const HostTools::Tool& tool : HostTools::allTools())
    std::printf("%.*s\n%.*s\n", static_cast<int>(tool.paths.size()), tool.paths.data(),
                static_cast<int>(tool.help.size()), tool.help.data());
  return 0;
}

}  // namespace

int main(int argc, char** argv) try {
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  if (arguments.size() == 1 && arguments[0] == "--help") return printHelp();
  if (arguments.size() < 3 || arguments[0] != "--host") {
    std::fputs("kiva-demo-tools: expected --host DIR PATH VECTOR..., or --help\n", stderr);
    return kUsage;
  }
  HostSample::SampleToolHost host(arguments[1]);
  return give(HostTools::runTool(host, arguments[2], {arguments.begin() + 3, arguments.end()}));
} catch (const std::exception& error) {
  std::fprintf(stderr, "kiva-demo-tools: %s\n", error.what());
  return kUsage;
}
