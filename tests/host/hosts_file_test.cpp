// SPDX-License-Identifier: MIT
// The hosts file while a name is resolved without it: killed at every step, and on real mounts.
#include <unistd.h>

#include <functional>
#include <stop_token>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "network/hosts_backup.h"

namespace {

using HostLinux::inNamespaces;
using HostLinux::killedAt;
using HostLinux::shell;
using Lines = std::vector<std::string>;

const std::string kText = "127.0.0.1\tlocalhost # us\r\n10.0.0.5 a HALO.test halo\n\n";
const std::string kShortened = "127.0.0.1\tlocalhost # us\r\n10.0.0.5 a halo\n\n";
const Lines kPutBack = {"log.6 Putting /etc/hosts back from /etc/hosts.backup"};

bool resolve() {
  return Kiva::resolveByServers("halo.test", {});
}

struct NamingPlatform : TestSupport::RecordingPlatform {
  bool ResolveName(const std::string&) override {
    seen = Harness::contentOf(HostPath("/etc/hosts"));
    meanwhile();
    return true;
  }
  std::function<void()> meanwhile = [] {};
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
    InEtc("mkdir -p ../run ../var/run; chmod 604 hosts; chown 7:8 hosts || [ $(id -u) != 0 ]");
  }
  void InEtc(const std::string& script) { ASSERT_TRUE(shell("cd " + etc + "\n" + script)); }
  std::string Hosts() const { return Harness::contentOf(etc + "/hosts"); }
  /// All that the folder holds, who may do what with it, and what the file says.
  std::string State() const {
    return HostLinux::ended("cd " + etc + "; ls -Aln --time-style=+ . ../run; cat hosts").output;
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
  InEtc("mv hosts ../run; ln -s ../run/hosts hosts");
  KillEverywhere(true);
}

TEST_F(HostsFileTest, IsWholeAgainWhereSomethingIsMountedOverIt) {
  inNamespaces([this] {
    InEtc("cp -p hosts ../mounted; mount --bind ../mounted hosts");
    KillEverywhere(false);
  });
}

TEST_F(HostsFileTest, IsWorthMoreThanATest) {
  const std::array<const char*, 2> cases[] = {
      {"echo mine >hosts.backup", "backup /etc/hosts: File exists"},
      {"rm hosts.backup; mkdir hosts.backup", "backup /etc/hosts: File exists"},
      {"rmdir *.backup; ln -sf nowhere hosts", "backup /etc/hosts: No such file or directory"},
      {"ln -sfn hosts hosts; touch .kiva-new",
       "backup /etc/hosts: Too many levels of symbolic links"},
      {"mount --bind . .; rm hosts; touch hosts; mount -o remount,ro,bind .",
       "backup /etc/hosts: Read-only file system"}};
  inNamespaces([&] {
    std::filesystem::current_path(etc);
    for (const auto& [script, failure] : cases) {
      InEtc(script);
      const std::string before = State();
      EXPECT_FALSE(resolve());
      EXPECT_EQ(platform->Lines().back(), std::string("log.6 failed to ") + failure);
      Kiva::repairHostsFile();
      EXPECT_EQ(State(), before);
    }
    EXPECT_EQ(platform->seen, "");
  });
}

TEST_F(HostsFileTest, KeepsWhatOthersChangeMeanwhile) {
  const std::string entry = "10.0.0.5 a HALO.test halo\n";
  const std::array<std::string, 2> cases[] = {
      {"echo 10.0.0.6 b >>hosts", kText + "10.0.0.6 b\n"},
      {"echo 10.0.0.5 x a halo >hosts", "10.0.0.5 x a halo\n" + entry},
      {"printf '1.2.3.4 b' >hosts", "1.2.3.4 b\n" + entry},
      {"echo 10.0.0.9 halo.test >hosts", "10.0.0.9 halo.test\n"},
      {"rm hosts", kText},
      {"rm hosts.backup", kText},
      {"rm hosts.backup*", kText},
      {"cp hosts hosts.backup", kText}};
  for (const auto& [script, text] : cases) {
    folder.Write("etc/hosts", kText);
    platform->meanwhile = [&] { InEtc(script); };
    EXPECT_TRUE(resolve());
    EXPECT_EQ(Hosts(), text) << script;
    InEtc("[ $(ls) = hosts ]");
  }
}

TEST_F(HostsFileTest, LosesNoCopyThatMayBeTheLast) {
  InEtc("cp hosts hosts.backup.kiva; echo 10.0.0.6 b >hosts");
  Kiva::repairHostsFile();
  EXPECT_EQ(Hosts(), "10.0.0.6 b\n");
  EXPECT_EQ(Harness::contentOf(etc + "/hosts.backup.kiva-kept"), kText);
}

TEST_F(HostsFileTest, IsPutBackByWhoAbandonsAResolutionAndLaterWhereThatFails) {
  std::stop_source source;
  platform->meanwhile = [&] {
    source.request_stop();
    EXPECT_EQ(Hosts(), kText);
  };
  EXPECT_TRUE(Kiva::resolveByServers("halo.test", source.get_token()));
  platform->meanwhile = [&] { InEtc("rm hosts; mkdir hosts"); };
  EXPECT_TRUE(resolve());
  EXPECT_EQ(platform->Lines(), Lines{"log.6 failed to restore /etc/hosts: Is a directory"});
  InEtc("rmdir hosts");
  Kiva::repairHostsFile();
  EXPECT_EQ(Hosts(), kText);
}

}  // namespace
