// SPDX-License-Identifier: MIT
// What the kernel says was executed: a sample host must never reach a tool of the machine.
#include <gtest/gtest.h>

#include <set>

#include "harness/demo.h"

using namespace Harness;

namespace {

TEST(SampleHost, RunsNothingOfTheMachineButThePager) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the leak check of the tools fails under a tracer";
#endif
  if (!std::filesystem::exists("/usr/bin/strace")) GTEST_SKIP() << "no strace on this machine";
  Demo demo({{"welcomeMessage", "{ssl-thumbprint} {ssh-rsa-fingerprint}"}},
            {.script = R"(exec strace -D -f -qq -e trace=execve -o "$2/trace" "$0" "$@")"});
  const auto executed = [&] {
    std::set<std::string> programs;
    std::ifstream file(demo.host.Directory() / "trace");
    for (std::string line; std::getline(file, line, '"');)
      if (line.ends_with("execve(") && std::getline(file, line, '"'))
        programs.insert(std::filesystem::path(line).filename());
    return programs;
  };
  demo.WaitForPassing("5D:0A:91:7E");
  if (executed().empty()) GTEST_SKIP() << "this machine lets nobody trace";
  demo.Do({"F2", "Down", "type:demo", "Enter", "wait:System Customization"});
  demo.Press("Down", 7);
  demo.Type("1");
  demo.WaitForPassing("<Q> Quit");
  demo.Do({"type:q", "wait:System Customization"});
  EXPECT_EQ(executed(), (std::set<std::string>{"kiva-demo", "kiva-demo-tools", "less"}));
}

}  // namespace
