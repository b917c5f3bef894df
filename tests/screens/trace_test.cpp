// SPDX-License-Identifier: MIT
// What the kernel says was executed: a sample host must never reach a tool of the machine.
#include <gtest/gtest.h>

#include <set>

#include "harness/demo.h"

using namespace Harness;

namespace {

TEST(SampleHost, RunsNothingOfTheMachineButThePager) {
  if (!std::filesystem::exists("/usr/bin/strace")) GTEST_SKIP() << "no strace on this machine";
  Demo demo(
      {{"welcomeMessage", "{hostname} {ssl-thumbprint} {ssh-rsa-fingerprint}"}},
      {.script =
           R"(export ASAN_OPTIONS=detect_leaks=0; exec strace -D -f -qq -e trace=execve -o "$2/trace" "$0" "$@")"});
  const auto executed = [&] {
    std::set<std::string> programs;
    std::ifstream file(demo.host.Directory() / "trace");
    for (std::string line; std::getline(file, line, '"');)
      if (line.ends_with("execve(") && std::getline(file, line, '"'))
        programs.insert(std::filesystem::path(line).filename());
    return programs;
  };
  demo.WaitForPassing("halo-01.example.test");
  if (executed().empty()) GTEST_SKIP() << "this machine lets nobody trace";
  demo.Do({"F2", "Down", "type:demo", "Enter", "wait:System Customization"});
  // The leak check fails under a tracer, and with it what a sanitized tool answers, so the way to
  // the logs is counted from the end, where no answer changes it.
  demo.Press("Down", 9);
  demo.Press("Up", 2);
  demo.Type("1");
  demo.WaitForPassing("<Q> Quit");
  demo.Do({"type:q", "wait:System Customization"});
  EXPECT_EQ(executed(), (std::set<std::string>{"kiva-demo", "kiva-demo-tools", "less"}));
}

}  // namespace
