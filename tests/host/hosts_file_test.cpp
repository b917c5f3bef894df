// SPDX-License-Identifier: MIT
// The hosts file while a name is resolved without it: killed at every step, and on real mounts.
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "network/hosts_backup.h"

namespace {

using HostLinux::inNamespaces;
using HostLinux::shell;
using Lines = std::vector<std::string>;

const std::string kText = "127.0.0.1\tlocalhost # us\r\n10.0.0.5 a HALO.test halo\n\n";
const std::string kShortened = "127.0.0.1\tlocalhost # us\r\n10.0.0.5 a halo\n\n";
const Lines kPutBack = {"log.6 Putting /etc/hosts back from /etc/hosts.backup"};

bool resolve() {
  return Kiva::resolveByServers("halo.test", {});
}

/// Kills `work` when it enters or leaves its system calls for the `step`th time; false when it has
/// ended before.
bool killedAt(int step, void (*work)()) {
  const pid_t child = fork();
  if (child == 0) {
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  for (int i = 0; i < step && WIFSTOPPED(status); ++i) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  if (!WIFSTOPPED(status)) return false;
  kill(child, SIGKILL);
  return waitpid(child, &status, 0) == child;
}

class NamingPlatform : public TestSupport::RecordingPlatform {
 public:
  bool ResolveName(const std::string&) override {
    seen = Harness::contentOf(HostPath("/etc/hosts"));
    return true;
  }
  std::string seen;
};

/// A host in a folder.
class HostsFileTest : public testing::Test {
 protected:
  HostsFileTest() {
    auto own = std::make_unique<NamingPlatform>();
    platform = own.get();
    platform->root = folder.Path();
    HostSeam::useHost(std::move(own), std::make_unique<TestSupport::ValueDriver>());
    folder.Write("etc/hosts", kText);
    InEtc("chmod 604 hosts; chown 7:8 hosts || [ $(id -u) != 0 ]");
  }
  void InEtc(const std::string& script) { ASSERT_TRUE(shell("cd " + etc + "\n" + script)); }
  std::string Hosts() const { return Harness::contentOf(etc + "/hosts"); }
  /// All that the folder holds, who may do what with the file, and what it says.
  std::string State() const {
    struct stat status {};
    const bool there = stat((etc + "/hosts").c_str(), &status) == 0 && S_ISREG(status.st_mode);
    std::multiset<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(etc))
      names.insert(entry.path().filename().string() + (entry.is_symlink() ? "@" : ""));
    return testing::PrintToString(
        std::tuple(names, status.st_mode, status.st_uid, status.st_gid, there ? Hosts() : ""));
  }
  void KillEverywhere(bool wholeAtAnyTime);

  Harness::TemporaryFolder folder;
  const std::string etc = folder.Path() / "etc";
  NamingPlatform* platform = nullptr;
};

void HostsFileTest::KillEverywhere(bool wholeAtAnyTime) {
  const std::string before = State();
  int shortened = 0;
  for (int step = 1; killedAt(step, [] { resolve(); }); ++step) {
    const bool changed = Hosts() != kText;
    ASSERT_TRUE(!changed || !wholeAtAnyTime || Hosts() == kShortened) << "after " << step;
    shortened += Hosts() == kShortened ? 1 : 0;
    platform->Clear();
    Kiva::repairHostsFile();
    ASSERT_TRUE(!changed || platform->Lines() == kPutBack);
    ASSERT_EQ(State(), before) << "after a kill at " << step;
  }
  EXPECT_GT(shortened, 5);
  EXPECT_TRUE(resolve());
  EXPECT_EQ(platform->seen, kShortened);
  EXPECT_EQ(State(), before);
}

TEST_F(HostsFileTest, IsWholeAgainAfterAKillAtAnyStep) {
  KillEverywhere(true);
  InEtc("mkdir ../run; mv hosts ../run; ln -s ../run/hosts hosts");
  KillEverywhere(true);
  for (int step = 1, again = 1; again; ++step) {
    folder.Write("etc/hosts.backup", kText);
    folder.Write("run/hosts", kShortened);
    again = killedAt(step, Kiva::repairHostsFile);
    Kiva::repairHostsFile();
    ASSERT_EQ(Hosts(), kText) << "after a repair was killed at " << step;
  }
}

TEST_F(HostsFileTest, IsWholeAgainWhereSomethingIsMountedOverIt) {
  inNamespaces([this] {
    InEtc("cp -p hosts ../mounted; mount --bind ../mounted hosts");
    KillEverywhere(false);
  });
}

TEST_F(HostsFileTest, IsWorthMoreThanATest) {
  const std::array<const char*, 2> cases[] = {
      {"mkdir hosts.backup", "restore /etc/hosts: Not a directory"},
      {"rmdir hosts.backup; mv hosts old; mkdir hosts", "backup /etc/hosts: Is a directory"},
      {"rmdir hosts; ln -s nowhere hosts", "backup /etc/hosts: No such file or directory"},
      {"mv old hosts; mount --bind . .; mount -o remount,ro,bind .",
       "backup /etc/hosts: Read-only file system"}};
  inNamespaces([&] {
    for (const auto& [script, failure] : cases) {
      InEtc(script);
      const std::string before = State();
      EXPECT_FALSE(resolve());
      EXPECT_EQ(platform->Lines().back(), std::string("log.6 failed to ") + failure);
      EXPECT_EQ(State(), before);
    }
    EXPECT_EQ(platform->seen, "");
  });
}

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
    EXPECT_FALSE(resolve());
    EXPECT_TRUE(HostCtl::Lib::platform().ResolveName("halo.test"));
    if (!HostLinux::installed("dnsmasq")) GTEST_SKIP() << "dnsmasq is not installed";
    ASSERT_TRUE(
        shell("dnsmasq --conf-file=/dev/null --no-resolv --no-hosts --user=root "
              "--address=/halo.test/127.0.0.9"));
    EXPECT_TRUE(resolve());
  });
}

}  // namespace
