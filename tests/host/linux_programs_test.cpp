// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "linux/files.h"
#include "linux/run_program.h"
#include "linux/tools/live_core.h"
#include "linux/tools/ping.h"

using namespace HostLinux;

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

TEST(LinuxPrograms, EndInTimeWhateverTheyDo) {
  const Harness::TemporaryFolder folder;
  const std::string late = "/bin/sh did not end in time";
  const std::tuple<const char*, int, std::string> cases[] = {
      {"echo out; echo err >&2; exit 3", 3, "out\nerr\n"},
      {"cat; head -c 200000 /dev/zero | tr '\\0' x", 0, std::string(4096, 'x')},
      {"echo kept; sleep 15 & exit 4", 4, "kept\n"},
      {"exec >&- 2>&-; sleep 0.1; exit 5", 5, ""},
      {"kill -9 $$", -1, "/bin/sh was killed"},
      {"sleep 60", -1, late},
      {"yes", -1, late},
      {"yes & wait", -1, late}};
  for (const auto& [script, status, output] : cases) {
    const auto start = std::chrono::steady_clock::now();
    const auto result = runProgram({"/bin/sh", {"sh", "-c", script}}, milliseconds(1500));
    EXPECT_EQ(result.status, status) << script;
    EXPECT_EQ(result.output, output) << script;
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(5000)) << script;
  }
  EXPECT_EQ(runProgram({"/no/such", {"such"}}, milliseconds(1500)).output,
            "/no/such: No such file or directory");
  const std::string keep = "sleep 60 & echo $! > " + (folder.Path() / "pid").string() + "; wait";
  EXPECT_EQ(runProgram({"/bin/sh", {"sh", "-c", keep}}, milliseconds(300)).output, late);
  const std::string kept = "/proc/" + Files(folder.Path()).ReadLine("/pid") + "/cmdline";
  EXPECT_TRUE(waitUntil([&] { return Files().Read(kept).value_or("").empty(); }))
      << "what it started is killed with it";
  const auto before = std::signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(runProgram({"/bin/true", {"true"}}, milliseconds(5000)).status, -1)
      << "a status that somebody else took is no success";
  std::signal(SIGCHLD, before);
}

// A process with a name of its own and more memory than it has touched, until its input ends.
class LinuxLiveCore : public testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() != 0 || !installed("gdb prlimit dd"))
      GTEST_SKIP() << "not root, or no gdb on this machine";
    folder_.Link(core_.process, "/bin/dd");
    fs::create_directory(cores_);
    const std::string folder = folder_.Path();
    input_ =
        popen((folder + "/" + core_.process + " bs=16M >" + folder + "/out 2>&1").c_str(), "we");
    std::fputc('x', input_);
    std::fflush(input_);
    ASSERT_TRUE(waitUntil([&] { return Files(folder).ReadLine("/out") == "x"; }));
  }
  void TearDown() override {
    if (!input_) return;
    EXPECT_EQ(pclose(input_), 0) << "the process went on to its own end";
  }
  static std::string Failure(const HostSeam::LiveCore& core, const LiveCoreLimits& limits = {}) {
    return failureOf([&] { writeLiveCore(core, limits); });
  }

  Harness::TemporaryFolder folder_;
  const std::string cores_ = folder_.Path() / "cores";
  /// Only this test's own process is called so, and by more than the kernel keeps of a name.
  const HostSeam::LiveCore core_{"kh" + std::to_string(getpid()) + "-hoarder-of-memory",
                                 "mgmtd-restart%", cores_};
  FILE* input_ = nullptr;
};

TEST_F(LinuxLiveCore, IsAWholeCoreOfAProcessThatGoesOn) {
  const std::string path = writeLiveCore(core_);
  EXPECT_EQ(path, cores_ + "/mgmtd-restart%.core");
  EXPECT_EQ(Files().Read(path).value_or("").substr(0, 4), "\177ELF");
  EXPECT_GT(fs::file_size(path), 16u << 20);
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(Files().List(cores_), std::vector<std::string>{"mgmtd-restart%.core"});
}

TEST_F(LinuxLiveCore, LeavesNothingBehindWhenItFails) {
  const std::string& name = core_.process;
  const std::tuple<HostSeam::LiveCore, LiveCoreLimits, const char*> cases[] = {
      {core_, {.bytes = 4096}, "larger than a core may be"},
      {core_, {.bytes = 8 << 20}, "could not be written"},
      {core_, {.time = milliseconds(1)}, "did not end in time"},
      {{"no-such", "x", cores_}, {}, "no process of root has this name"},
      {{name, "x", cores_ + "/none"}, {}, "No such file"}};
  for (const auto& [core, limits, text] : cases)
    EXPECT_PRED_FORMAT2(testing::IsSubstring, text, Failure(core, limits));
  EXPECT_TRUE(fs::is_empty(cores_));
}

TEST_F(LinuxLiveCore, OfAProcessThatCannotBeStoppedIsGivenUp) {
  const pid_t waiting = fork();
  if (waiting == 0) {
    prctl(PR_SET_NAME, "kiva-waiting");
    if (vfork() == 0) {
      poll(nullptr, 0, 3000);
      _exit(0);
    }
    _exit(7);
  }
  const std::string process = "/proc/" + std::to_string(waiting);
  ASSERT_TRUE(waitUntil([&] {
    return Files().ReadLine(process + "/stat").find("(kiva-waiting) D") != std::string::npos;
  }));
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "in time",
                      Failure({"kiva-waiting", "x", cores_}, {.time = milliseconds(1500)}));
  int status = 0;
  EXPECT_TRUE(waitUntil([&] { return waitpid(waiting, &status, WNOHANG) == waiting; }));
  kill(waiting, SIGKILL);
  EXPECT_EQ(WEXITSTATUS(status), 7) << "the process goes on when it can";
  EXPECT_TRUE(fs::is_empty(cores_));
}

TEST(LinuxPing, TellsWhoAnswers) {
  EXPECT_EQ(ping("-V", 1).status, 2) << "not an option";
  if (!installed("ping ip")) GTEST_SKIP() << "ping or ip is not installed";
  inNamespaces([] {
    ASSERT_TRUE(
        shell("ip link set lo up\nip link add up0 type veth peer name dn0\nip link set dn0 up\n"
              "ip addr add 10.9.0.1/24 dev up0\nip addr add fe80::7/64 dev up0 nodad\n"
              "ip link set up0 up"));
    for (const char* answering : {"127.0.0.1", "::1", "10.9.0.1", "fe80::7%up0"})
      EXPECT_EQ(ping(answering, 1).status, 0) << answering;
    EXPECT_EQ(ping("10.9.0.2", 1).status, 1) << "nobody there";
    EXPECT_EQ(ping("10.8.0.1", 1).status, 2) << "no way to there";
  });
}

}  // namespace
