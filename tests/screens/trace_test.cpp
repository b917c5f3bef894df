// SPDX-License-Identifier: MIT
// What the kernel says was executed: a sample host must never reach a tool of the machine.
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "tests/screens/demo.h"

namespace Harness {
namespace {

std::set<std::string> executed(const std::filesystem::path& trace) {
  std::set<std::string> programs;
  std::ifstream file(trace);
  for (std::string line; std::getline(file, line);) {
    const auto start = line.find("execve(\"");
    if (start == std::string::npos) continue;
    const std::string path = line.substr(start + 8, line.find('"', start + 8) - start - 8);
    programs.insert(std::filesystem::path(path).filename());
  }
  return programs;
}

TEST(SampleHost, RunsNothingOfTheMachineButThePager) {
  DemoHost host(nlohmann::json{{"welcomeMessage", "{ssl-thumbprint} {ssh-rsa-fingerprint}"}});
  const auto trace = host.Directory() / "trace";
  Launch launch = host.Demo();
  launch.arguments.insert(launch.arguments.begin(), {"/usr/bin/strace", "-D", "-f", "-qq", "-e",
                                                     "trace=execve", "-o", trace.string()});
  launch.environment["ASAN_OPTIONS"] = "detect_leaks=0";
  if (!std::filesystem::exists("/usr/bin/strace")) GTEST_SKIP() << "no strace on this machine";
  Terminal terminal(launch, {24, 80});
  terminal.WaitForPassing("5D:0A:91:7E");
  if (executed(trace).empty()) GTEST_SKIP() << "this machine lets nobody trace";
  terminal.Press("F2");
  terminal.Press("Down");
  terminal.Type("demo");
  terminal.Press("Enter");
  terminal.Press("Down", 7);
  terminal.Type("1");
  terminal.WaitForPassing("<Q> Quit");
  terminal.Type("q");
  terminal.WaitFor("System Customization");
  EXPECT_EQ(executed(trace), (std::set<std::string>{"kiva-demo", "kiva-demo-tools", "less"}));
}

}  // namespace
}  // namespace Harness
