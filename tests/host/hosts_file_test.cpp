// SPDX-License-Identifier: MIT
// The hosts file while a name is resolved without it: killed at every step, and on real mounts.
#include <signal.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>

#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "network/hosts_backup.h"

namespace {

using HostLinux::inNamespaces;
using HostLinux::shell;
namespace fs = std::filesystem;

const std::string kText = "127.0.0.1\tlocalhost # us\r\n10.0.0.5 a HALO.test halo\n\n";
const std::string kShortened = "127.0.0.1\tlocalhost # us\r\n10.0.0.5 a halo\n\n";
constexpr const char* kName = "halo.test";
constexpr const char* kPutBack = "log.6 Putting /etc/hosts back from /etc/hosts.backup";

std::string contentOf(const fs::path& file) {
  if (fs::is_directory(file)) return "folder";
  std::ifstream in(file);
  return {std::istreambuf_iterator<char>(in), {}};
}

class NamingPlatform : public TestSupport::RecordingPlatform {
 public:
  bool ResolveName(const std::string&) override {
    seen = contentOf(root / "etc/hosts");
    return true;
  }
  std::string seen;
};

/// A host in a folder, whose hosts file is as a machine may have it.
class HostsFileTest : public testing::Test {
 protected:
  HostsFileTest() {
    auto own = std::make_unique<NamingPlatform>();
    platform = own.get();
    platform->root = folder.Path();
    HostSeam::useHost(std::move(own), std::make_unique<TestSupport::ValueDriver>());
    folder.Write("etc/hosts", kText);
    EXPECT_EQ(chmod(Etc("hosts").c_str(), 0604), 0);
    const bool root = geteuid() == 0;
    EXPECT_EQ(chown(Etc("hosts").c_str(), root ? 7 : getuid(), root ? 8 : getgid()), 0);
  }
  fs::path Etc(const std::string& name) const { return folder.Path() / "etc" / name; }

  /// Everything about the folder that a test of the network has to leave alone.
  std::string State() const {
    std::set<std::string> lines;
    for (const auto& entry : fs::directory_iterator(Etc(""))) {
      struct stat status {};
      stat(entry.path().c_str(), &status);
      lines.insert(entry.path().filename().string() + (entry.is_symlink() ? " link " : " ") +
                   std::to_string(status.st_mode) + " " + std::to_string(status.st_uid) + " " +
                   std::to_string(status.st_gid) + " " + contentOf(entry.path()));
    }
    std::string all;
    for (const auto& line : lines) all += line + "\n";
    return all;
  }

  /// Kills a resolution at one system call after the other.
  void KillEverywhere(bool wholeAtAnyTime);

  Harness::TemporaryFolder folder;
  NamingPlatform* platform = nullptr;
};

bool resolve() {
  return Kiva::resolveByServers(kName, {});
}

/// Kills `work` when it enters or leaves its system calls for the `step`th time; false when it has
/// ended before.
bool killedAt(int step, const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  for (int i = 0; i < step; ++i) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) return false;
  }
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  return true;
}

void HostsFileTest::KillEverywhere(bool wholeAtAnyTime) {
  const std::string before = State();
  int repairs = 0, shortened = 0;
  for (int step = 1; killedAt(step, resolve); ++step) {
    const std::string left = contentOf(Etc("hosts"));
    ASSERT_TRUE(!wholeAtAnyTime || left == kText || left == kShortened) << left;
    shortened += left == kShortened ? 1 : 0;
    platform->Clear();
    Kiva::repairHostsFile();
    repairs += platform->Lines() == std::vector<std::string>{kPutBack} ? 1 : 0;
    ASSERT_EQ(State(), before) << "after a kill at " << step;
  }
  EXPECT_GT(shortened, 5);
  EXPECT_GE(repairs, shortened);
  EXPECT_TRUE(resolve());
  EXPECT_EQ(platform->seen, kShortened);
  EXPECT_EQ(State(), before);
}

TEST_F(HostsFileTest, IsWholeAgainAfterAKillAtAnyStep) {
  KillEverywhere(true);
  fs::create_directories(folder.Path() / "run");
  fs::rename(Etc("hosts"), folder.Path() / "run/hosts");
  folder.Link("etc/hosts", "../run/hosts");
  KillEverywhere(true);
}

TEST_F(HostsFileTest, IsWholeAgainWhereSomethingIsMountedOverIt) {
  inNamespaces([this] {
    folder.Write("mounted", kText);
    ASSERT_TRUE(shell("mount --bind " + (folder.Path() / "mounted").string() + " " +
                      Etc("hosts").string()));
    KillEverywhere(false);
  });
}

TEST_F(HostsFileTest, NoTestIsWorthIt) {
  const auto refused = [&](const std::string& line, const std::string& script) {
    SCOPED_TRACE(script);
    ASSERT_TRUE(shell("cd " + Etc("").string() + "\n" + script));
    const std::string before = State();
    platform->Clear();
    EXPECT_FALSE(resolve());
    EXPECT_EQ(platform->Lines().back(), line);
    EXPECT_EQ(platform->seen, "");
    EXPECT_EQ(State(), before);
  };
  refused("log.6 failed to restore /etc/hosts: Not a directory", "mkdir hosts.backup");
  refused("log.6 failed to backup /etc/hosts: Is a directory",
          "rmdir hosts.backup; mv hosts old; mkdir hosts");
  refused("log.6 failed to backup /etc/hosts: No such file or directory", "rmdir hosts");
  refused("log.6 failed to backup /etc/hosts: No such file or directory", "ln -s nowhere hosts");
  inNamespaces([&] {
    refused("log.6 failed to backup /etc/hosts: Read-only file system",
            "mv old hosts; mount --bind . .; mount -o remount,ro,bind .");
  });
}

TEST_F(HostsFileTest, OfATestThatWasCutOffIsPutBackFirst) {
  int step = 0;
  const auto cutOff = [&] {
    folder.Write("etc/hosts.backup", kText);
    folder.Write("etc/hosts", kShortened);
  };
  for (cutOff(); killedAt(++step, Kiva::repairHostsFile); cutOff()) {
    Kiva::repairHostsFile();
    ASSERT_EQ(contentOf(Etc("hosts")), kText) << "after a kill at " << step;
  }
  cutOff();
  platform->Clear();
  EXPECT_TRUE(resolve());
  EXPECT_EQ(platform->Lines(), std::vector<std::string>{kPutBack});
  EXPECT_EQ(contentOf(Etc("hosts")), kText);
  std::stop_source abandoned;
  abandoned.request_stop();
  platform->seen.clear();
  EXPECT_FALSE(Kiva::resolveByServers(kName, abandoned.get_token()));
  EXPECT_EQ(platform->seen, "");
}

// The machine's own name resolution, on a machine whose name server does not answer.
TEST(HostsFileOnThisMachine, IsNotAskedDuringTheTest) {
  inNamespaces([] {
    ASSERT_TRUE(shell(R"(
      ip link set lo up
      mount -t tmpfs tmpfs /etc
      echo 'hosts: files dns' >/etc/nsswitch.conf
      echo 'nameserver 127.0.0.1' >/etc/resolv.conf
      echo 'root:x:0:0::/:/bin/sh' >/etc/passwd
      echo '127.0.0.5 halo.test' >/etc/hosts)"));
    HostSeam::useHost(std::make_unique<HostLinux::LinuxPlatform>(),
                      std::make_unique<TestSupport::ValueDriver>());
    EXPECT_TRUE(HostCtl::Lib::platform().ResolveName(kName));
    EXPECT_FALSE(resolve());
    EXPECT_TRUE(HostCtl::Lib::platform().ResolveName(kName));
    EXPECT_EQ(contentOf("/etc/hosts"), "127.0.0.5 halo.test\n");
    if (!HostLinux::installed("dnsmasq")) return;
    ASSERT_TRUE(
        shell("dnsmasq --conf-file=/dev/null --no-resolv --no-hosts --user=root "
              "--address=/halo.test/127.0.0.9"));
    EXPECT_TRUE(resolve());
  });
}

}  // namespace
