// SPDX-License-Identifier: MIT
#include "system/run_command.h"

#include <fcntl.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "hostctl/lib/descriptor.h"
#include "linux/files.h"
#include "linux/run_program.h"
#include "tarnctl/util/exec.h"

namespace {

using HostLinux::Files;
using Kiva::Command;
using Kiva::CommandResult;
using Kiva::RunCommand;

constexpr const char* kTimeOut = "log.4 Killing process because 1 seconds timeout expired";
constexpr const char* kAbnormal = "log.3 Run Command did not terminate normally";

Command shell(const std::string& line, std::string_view input = {}, std::size_t outputs = 255,
              std::size_t errors = 255, int timeOut = 0) {
  return {"/bin/sh", {"sh", "-c", line}, input, outputs, errors, timeOut};
}

int exec(const std::string& line) {
  return TarnCtl::Util::TarnCtl_Exec(line, false, true, false);
}

CommandResult runTrue() {
  return RunCommand({.path = "/bin/true", .arguments = {"true"}});
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
  const std::string page = "head -c 60000 /dev/zero | tr '\\0' x", flood = page + ";" + page;
  using Text = std::string;
  const std::tuple<const char*, Command, int, Text, Text, std::vector<Text>> cases[] = {
      {"both outputs", shell("echo out; echo err >&2; exit 255"), 255, "out\n", "err\n", {}},
      {"cut at the capacity", shell("echo 12345; echo abc >&2", {}, 4, 2), 0, "1234", "ab", {}},
      {"in time", shell("sleep 0.1; echo a; exit 4", {}, 9, 0, 30), 4, "a\n", "", {}},
      {"input, then its end", shell("cat; cat >&2", "both words"), 0, "both words", "", {}},
      {"the end without input", shell("cat; echo end"), 0, "end\n", "", {}},
      {"input that nobody reads", shell("exec 0<&-; sleep 0.2; exit 5", "x"), 5, "", "", {}},
      {"more than a page", shell(page, {}, 50000), 0, std::string(50000, 'x'), "", {}},
      {"more than a pipe", shell(flood, {}, 4, 0, 1), -1, "xxxx", "", {kTimeOut, kAbnormal}},
      {"a grandchild keeps the pipe", shell("sleep 20 & echo a"), 0, "a\n", "", {}},
      {"ended by a signal", shell("echo so far; kill -TERM $$"), -1, "so far\n", "", {kAbnormal}}};
  for (const auto& [name, command, status, output, errors, logged] : cases) {
    SCOPED_TRACE(name);
    platform->Clear();
    const auto start = std::chrono::steady_clock::now();
    const CommandResult result = RunCommand(command);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.errors, errors);
    EXPECT_EQ(result.startError, 0);
    EXPECT_EQ(Logged(), logged);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  }
}

TEST_F(RunCommandTest, StartThatFails) {
  for (const auto& [path, error] :
       {std::pair{"/bin/no-such-tool", ENOENT}, {"true", ENOENT}, {"/etc", EACCES}}) {
    const CommandResult result = RunCommand({.path = path, .arguments = {"tool"}});
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.startError, error) << path;
  }
  EXPECT_EQ(Logged(), std::vector<std::string>{});
}

TEST_F(RunCommandTest, LinesOfTheHostsShell) {
  const std::pair<std::string, int> cases[] = {
      {"for fd in 0 1 2; do test /proc/$$/fd/$fd -ef /dev/null || exit 9; done", 0},
      {"exit 255", 255},
      {"/no/such/tool", 127},
      {"kill -9 $$", -1}};
  for (const auto& [line, status] : cases) {
    EXPECT_EQ(exec(line), status) << line;
    EXPECT_EQ(platform->Lines().back(), "run /bin/sh sh -c " + line);
  }
  platform->scripts["/bin/sh"] = "";
  EXPECT_EQ(exec("exit 0"), -1) << "no shell";
  EXPECT_EQ(Logged(), std::vector<std::string>{});
}

TEST_F(RunCommandTest, DescriptorsThatRunOut) {
  // What a sanitizer looks at for the first time costs it descriptors.
  EXPECT_EQ(exec("exit 0"), 0);
  std::vector<HostCtl::Lib::Descriptor> taken;
  while (taken.empty() || taken.back()) taken.emplace_back(open("/dev/null", O_RDONLY | O_CLOEXEC));
  EXPECT_EQ(exec("exit 0"), -1);
  for (int spare = 0; spare < 6; ++spare) {
    const CommandResult result = runTrue();
    EXPECT_EQ(result.status, -1) << spare;
    EXPECT_EQ(result.startError, EMFILE) << spare;
    taken.pop_back();
  }
  taken.pop_back();
  EXPECT_EQ(runTrue().status, 0);
}

TEST_F(RunCommandTest, TimeOutKillsTheGroup) {
  const pid_t somebodyElses = fork();
  if (somebodyElses == 0) _exit(9);
  const auto start = std::chrono::steady_clock::now();
  const CommandResult result = RunCommand(shell("sleep 100 & echo $$ $!; wait", {}, 255, 255, 1));
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  EXPECT_TRUE(took.count() >= 1 && took.count() < 5) << took.count();
  EXPECT_EQ(result.status, -1);
  EXPECT_EQ(Logged(), (std::vector<std::string>{kTimeOut, kAbnormal}));

  pid_t child = 0, grandchild = 0;
  ASSERT_EQ(std::sscanf(result.output.c_str(), "%d %d", &child, &grandchild), 2);
  const std::string words = "/proc/" + std::to_string(grandchild) + "/cmdline";
  EXPECT_TRUE(HostLinux::waitUntil([&] { return Files().Read(words).value_or("").empty(); }));
  siginfo_t info{};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
  runTrue();
  EXPECT_EQ(waitpid(child, nullptr, WNOHANG), -1) << "the killed child is still a zombie";
  int status = 0;
  EXPECT_EQ(waitpid(somebodyElses, &status, 0), somebodyElses);
  EXPECT_EQ(WEXITSTATUS(status), 9);
}

TEST_F(RunCommandTest, EveryChildStartsClean) {
  const Harness::TemporaryFolder folder;
  const std::string file = folder.Path() / "found";
  const std::string script = R"((ls -x /proc/$$/fd; tr '\0' ' ' </proc/$$/environ
      cut -d ' ' -f 1,5,6 /proc/$$/stat) >)" +
                             file + "; exit 6";
  std::vector<HostCtl::Lib::Descriptor> leaky;
  for (int i = 0; i < 40; ++i) leaky.emplace_back(open("/dev/null", O_RDONLY));
  sigset_t all, before;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, &before);
  std::signal(SIGUSR1, SIG_IGN);
  std::vector<std::string> found;
  const HostCtl::Lib::Program program{"/bin/sh", {"sh", "-c", script}};
  const std::function<int()> starts[] = {
      [&] { return RunCommand(shell(script)).status; }, [&] { return exec(script); },
      [&] { return HostLinux::runProgram(program, std::chrono::seconds(10)).status; }};
  for (const auto& start : starts) {
    EXPECT_EQ(start(), 6);
    found.push_back(Files().Read(file).value_or(""));
  }
  const Command grep{"/bin/grep", {"grep", "-E", "^Sig(Blk|Ign)", "/proc/self/status"}, {}, 255};
  const std::string signals = RunCommand(grep).output;  // a shell would change its own
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  std::signal(SIGUSR1, SIG_DFL);

  constexpr unsigned long kOfTheLibrary = 0x180000000;  // signals 32 and 33
  unsigned long blocked = 0, ignored = 0;
  ASSERT_EQ(std::sscanf(signals.c_str(), "SigBlk: %lx SigIgn: %lx", &blocked, &ignored), 2);
  EXPECT_EQ((blocked | ignored) & ~kOfTheLibrary, 0u);
  for (const std::string& facts : found) {
    int child = 0, group = 0, leader = 0;
    std::sscanf(facts.c_str(), "0  1  2 PYTHONHOME=/ %d %d %d", &child, &group, &leader);
    EXPECT_TRUE(child > 0 && group == child && leader == child) << facts;
  }
}

TEST_F(RunCommandTest, StandardDescriptorsClosed) {
  const auto run = [] {
    for (int standard : {0, 1, 2}) close(standard);
    const CommandResult result = RunCommand(shell("cat; echo err >&2", "in"));
    _exit(result.output == "in" && result.errors == "err\n" ? 7 : 1);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(7), "");
}

TEST_F(RunCommandTest, TwoThreads) {
  const Harness::TemporaryFolder folder;
  const std::string here = "cd " + folder.Path().string() + "; ";
  const auto work = [&](const std::string& own, const std::string& other, int status) {
    const std::string meet = here + ": >" + own + "; for i in $(seq 1000); do test -e " + other +
                             " && exit " + std::to_string(status) + "; sleep 0.01; done";
    for (int i = 0; i < 40; ++i) {
      EXPECT_EQ(exec(meet), status) << "each waits until the other has come";
      const CommandResult result = RunCommand(shell("cat; exit 7", own));
      EXPECT_EQ(std::to_string(result.status) + result.output, "7" + own);
    }
  };
  std::thread thread(work, "one", "two", 3);
  work("two", "one", 4);
  thread.join();
}

}  // namespace
