// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "sample/journal.h"
#include "sample/store.h"

namespace {

using Harness::DemoHost;
using HostLinux::Ended;

/// Runs `work` in `count` processes at once; returns how many ended well.
template <typename Work>
int inProcesses(int count, Work work) {
  std::vector<pid_t> children;
  for (int i = 0; i < count; ++i) {
    const pid_t child = fork();
    if (child == 0) _exit(work(i) ? 0 : 1);
    children.push_back(child);
  }
  int good = 0;
  for (const pid_t child : children) {
    int status = -1;
    waitpid(child, &status, 0);
    good += status == 0;
  }
  return good;
}

Ended program(const std::string& name, const std::string& arguments) {
  return HostLinux::ended("'" KIVA_BINARY_DIR "/" + name + "' " + arguments);
}

TEST(SampleProcesses, WritersLoseNothingAndReadersSeeWholeStates) {
  constexpr int kWriters = 6, kRounds = 20;
  DemoHost host;
  host.Set("/count", 0);
  const auto write = [&](int) {
    HostSample::Store store(host.File());
    for (int round = 0; round < kRounds; ++round)
      store.Change([](HostSample::Json& json) {
        json["count"] = json["count"].get<int>() + 1;
        return true;
      });
    return true;
  };
  const auto read = [&](int) {
    HostSample::Store store(host.File());
    for (int round = 0; round < 20 * kRounds; ++round)
      if (store.State().accounts.size() != 5) return false;
    return true;
  };
  EXPECT_EQ(inProcesses(kWriters + 2, [&](int i) { return i < kWriters ? write(i) : read(i); }),
            kWriters + 2);
  EXPECT_EQ(host.State()["count"], kWriters * kRounds);
}

TEST(SampleProcesses, JournalLinesStayWhole) {
  DemoHost host;
  const std::string text(5000, 'x');
  const auto write = [&](int) {
    const HostSample::Journal journal(host.Directory() / "journal");
    for (int i = 0; i < 50; ++i) journal.Append("log.info", text);
    return true;
  };
  EXPECT_EQ(inProcesses(4, write), 4);
  EXPECT_EQ(host.Journal(), std::vector<std::string>(200, "log.info\t" + text));
}

TEST(SampleProcesses, TheDemoRefusesInOneLineBeforeItTouchesTheTerminal) {
  DemoHost host;
  host.WriteText("{}");
  const std::string home = host.Directory();
  const std::pair<std::string, std::string> cases[] = {
      {"--hots x", "unknown option --hots"},
      {"--host", "--host needs a directory"},
      {"1 2", "one virtual terminal is enough: 2"},
      {"--host /none", "/none/host.json: No such file or directory"},
      {"--host '" + home + "'", home + "/host.json: version is missing"}};
  for (const auto& [arguments, line] : cases) {
    const Ended demo = program("kiva-demo", arguments);
    EXPECT_EQ(demo.output, "kiva-demo: " + line + "\n");
    EXPECT_EQ(demo.status, 2);
  }
  EXPECT_EQ(host.Text(), "{}");
  EXPECT_EQ(program("kiva-demo-tools", "/bin/sh").status, 2);
  EXPECT_EQ(program("kiva-demo-tools", "--host /none /bin/sh sh").output,
            "kiva-demo-tools: /none/host.json: No such file or directory\n");
  EXPECT_NE(program("kiva-demo", "--help").output.find("--host DIR"), std::string::npos);
}

TEST(SampleProcesses, OneProgramIsEveryTool) {
  DemoHost host;
  host.Set("/tools", {{"/bin/tarnping", {{"signal", 9}, {"seconds", 1}}},
                      {"/none", {{"status", 4}, {"stdout", std::string(70000, 'x')}}}});
  const std::string directory = host.Directory(), option = "-q -g PXEBootEnabled";
  const std::string home = "--host '" + directory + "' ";
  std::filesystem::create_symlink(KIVA_BINARY_DIR "/kiva-demo-tools",
                                  host.Directory() / "halocfg-advcfg");
  EXPECT_EQ(HostLinux::ended("'" + directory + "/halocfg-advcfg' " + home + option).output, "0\n");
  EXPECT_EQ(program("kiva-demo-tools", home).status, 127);
  const Ended all = program("kiva-demo-tools", home + "--help");
  for (const char* tool : {"/bin/hmx-cmd\n", "/sbin/localcli\n", "/bin/openssl\n"})
    EXPECT_NE(all.output.find(tool), std::string::npos) << tool;

  const Ended longAnswer = program("kiva-demo-tools", home + "/none");
  EXPECT_EQ(longAnswer.status, 4);
  EXPECT_EQ(longAnswer.output, std::string(32768, 'x'));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_NE(program("kiva-demo-tools", home + "/bin/tarnping").status, 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

}  // namespace
