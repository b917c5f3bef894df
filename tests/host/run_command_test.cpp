// SPDX-License-Identifier: MIT
#include "system/run_command.h"

#include <fcntl.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include "hostctl/lib/descriptor.h"
#include "tests/support/recording_platform.h"

namespace {

using Kiva::Command;
using Kiva::CommandResult;
using Kiva::RunCommand;

constexpr const char* kTimeOut = "log.4 Killing process because 1 seconds timeout expired";
constexpr const char* kAbnormal = "log.3 Run Command did not terminate normally";

Command shell(const std::string& line) {
  return {.path = "/bin/sh",
          .arguments = {"sh", "-c", line},
          .outputCapacity = 255,
          .errorCapacity = 255};
}

/// Dead, whether or not somebody has taken its status yet.
bool isDead(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string number, name, state;
  return !(file >> number >> name >> state) || state == "Z";
}

bool diesSoon(pid_t process) {
  for (int i = 0; i < 500 && !isDead(process); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  return isDead(process);
}

/// The number after `label` in /proc/self/status, which a glibc child has for signals 32 and 33
/// too: those are the library's own.
unsigned long signalSet(const std::string& status, const std::string& label) {
  constexpr unsigned long kOfTheLibrary = 0x180000000;
  const std::size_t at = status.find(label);
  if (at == std::string::npos) return ~0UL;
  return std::stoul(status.substr(at + label.size()), nullptr, 16) & ~kOfTheLibrary;
}

class RunCommandTest : public TestSupport::OnRecordingHost {
 protected:
  /// What was logged, without the lines that name what was run.
  std::vector<std::string> Logged() const {
    auto lines = platform->Lines();
    std::erase_if(lines, [](const std::string& line) { return line.rfind("run ", 0) == 0; });
    return lines;
  }
};

TEST_F(RunCommandTest, StatusAndTexts) {
  struct Case {
    const char* name;
    Command command;
    int status;
    std::string output, errors;
    std::vector<std::string> logged;
  };
  Command few = shell("echo 1234567890; echo abcdef >&2; exit 3");
  few.outputCapacity = 4;
  few.errorCapacity = 2;
  Command inTime = shell("sleep 0.1; echo done; exit 4");
  inTime.timeOutSeconds = 30;
  Command input = shell("cat; cat >&2");
  input.input = "both words";
  Command unread = shell("exec 0<&-; sleep 0.2; exit 5");
  unread.input = "nobody reads this";
  Command full = shell("head -c 60000 /dev/zero | tr '\\0' x");
  full.outputCapacity = 50000;
  Command overfull = shell("head -c 200000 /dev/zero | tr '\\0' x");
  overfull.outputCapacity = 4;
  overfull.timeOutSeconds = 1;
  const Command environment{
      .path = "/bin/cat", .arguments = {"cat", "/proc/self/environ"}, .outputCapacity = 255};
  const Case cases[] = {
      {"true", {.path = "/bin/true", .arguments = {"true"}}, 0, "", "", {}},
      {"both outputs", shell("echo out; echo err >&2; exit 255"), 255, "out\n", "err\n", {}},
      {"cut at the capacity", few, 3, "1234", "ab", {}},
      {"ended in time", inTime, 4, "done\n", "", {}},
      {"input, then end of file", input, 0, "both words", "", {}},
      {"end of file without input", shell("cat; echo end"), 0, "end\n", "", {}},
      {"input that nobody reads", unread, 5, "", "", {}},
      {"more than a page", full, 0, std::string(50000, 'x'), "", {}},
      {"more than a pipe", overfull, -1, "xxxx", "", {kTimeOut, kAbnormal}},
      {"ended by a signal", shell("echo so far; kill -TERM $$"), -1, "so far\n", "", {kAbnormal}},
      {"environment", environment, 0, std::string("PYTHONHOME=/\0", 13), "", {}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    platform->Clear();
    const CommandResult result = RunCommand(one.command);
    EXPECT_EQ(result.status, one.status);
    EXPECT_EQ(result.output, one.output);
    EXPECT_EQ(result.errors, one.errors);
    EXPECT_EQ(result.startError, 0);
    EXPECT_EQ(Logged(), one.logged);
  }
}

TEST_F(RunCommandTest, StartThatFails) {
  for (const char* path : {"/bin/no-such-tool", "true", "/etc"}) {
    SCOPED_TRACE(path);
    const CommandResult result = RunCommand({.path = path, .arguments = {"tool"}});
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.startError, std::string(path) == "/etc" ? EACCES : ENOENT);
  }
  EXPECT_EQ(Logged(), std::vector<std::string>{});
}

TEST_F(RunCommandTest, DescriptorsThatRunOut) {
  std::vector<HostCtl::Lib::Descriptor> taken;
  while (taken.empty() || taken.back()) taken.emplace_back(open("/dev/null", O_RDONLY | O_CLOEXEC));
  for (int spare = 0; spare < 6; ++spare) {
    const CommandResult result = RunCommand({.path = "/bin/true", .arguments = {"true"}});
    EXPECT_EQ(result.status, -1) << spare;
    EXPECT_EQ(result.startError, EMFILE) << spare;
    taken.pop_back();
  }
  taken.pop_back();
  EXPECT_EQ(RunCommand({.path = "/bin/true", .arguments = {"true"}}).status, 0);
}

TEST_F(RunCommandTest, TimeOutKillsTheGroup) {
  const pid_t somebodyElses = fork();
  if (somebodyElses == 0) _exit(9);
  Command slow = shell("sleep 100 & echo $$ $!; wait");
  slow.timeOutSeconds = 1;
  const auto start = std::chrono::steady_clock::now();
  const CommandResult result = RunCommand(slow);
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, std::chrono::milliseconds(1000));
  EXPECT_LT(took, std::chrono::milliseconds(5000));
  EXPECT_EQ(result.status, -1);
  EXPECT_EQ(Logged(), (std::vector<std::string>{kTimeOut, kAbnormal}));

  pid_t child = 0, grandchild = 0;
  ASSERT_EQ(std::sscanf(result.output.c_str(), "%d %d", &child, &grandchild), 2);
  EXPECT_TRUE(diesSoon(grandchild));
  siginfo_t info{};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
  RunCommand({.path = "/bin/true", .arguments = {"true"}});
  EXPECT_EQ(waitpid(child, nullptr, WNOHANG), -1) << "the killed child is still a zombie";
  int status = 0;
  EXPECT_EQ(waitpid(somebodyElses, &status, 0), somebodyElses);
  EXPECT_EQ(WEXITSTATUS(status), 9);
}

TEST_F(RunCommandTest, GrandchildThatKeepsThePipe) {
  const auto start = std::chrono::steady_clock::now();
  const CommandResult result = RunCommand(shell("sleep 30 & echo $!"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_EQ(result.status, 0);
  const pid_t grandchild = std::atoi(result.output.c_str());
  ASSERT_GT(grandchild, 1);
  kill(grandchild, SIGKILL);
}

TEST_F(RunCommandTest, ChildStartsClean) {
  std::vector<HostCtl::Lib::Descriptor> leaky;
  for (int i = 0; i < 40; ++i) leaky.emplace_back(open("/dev/null", O_RDONLY));
  sigset_t all, before;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, &before);
  std::signal(SIGUSR1, SIG_IGN);
  const CommandResult open = RunCommand(
      {.path = "/bin/ls", .arguments = {"ls", "-x", "/proc/self/fd"}, .outputCapacity = 255});
  const CommandResult signals =
      RunCommand({.path = "/bin/grep",
                  .arguments = {"grep", "-E", "^Sig(Blk|Ign)", "/proc/self/status"},
                  .outputCapacity = 255});
  const CommandResult session = RunCommand(
      {.path = "/bin/cat", .arguments = {"cat", "/proc/self/stat"}, .outputCapacity = 255});
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  std::signal(SIGUSR1, SIG_DFL);

  EXPECT_EQ(open.output, "0  1  2  3\n") << "3 is the folder that ls itself reads";
  EXPECT_EQ(signalSet(signals.output, "SigBlk:"), 0u);
  EXPECT_EQ(signalSet(signals.output, "SigIgn:"), 0u);
  int process = 0, group = 0, leader = 0;
  ASSERT_EQ(
      std::sscanf(session.output.c_str(), "%d (cat) %*c %*d %d %d", &process, &group, &leader), 3);
  EXPECT_EQ(group, process);
  EXPECT_EQ(leader, process);
}

TEST_F(RunCommandTest, StandardDescriptorsClosed) {
  const pid_t child = fork();
  if (child == 0) {
    for (int standard : {0, 1, 2}) close(standard);
    Command command = shell("cat; echo err >&2");
    command.input = "in";
    const CommandResult result = RunCommand(command);
    _exit(result.output == "in" && result.errors == "err\n" ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST_F(RunCommandTest, TwoThreads) {
  const auto work = [](const std::string& word) {
    for (int i = 0; i < 40; ++i) {
      Command command = shell("cat; exit 7");
      command.input = word;
      const CommandResult result = RunCommand(command);
      EXPECT_EQ(result.status, 7);
      EXPECT_EQ(result.output, word);
    }
  };
  std::thread other(work, "one");
  work("two");
  other.join();
}

}  // namespace
