// SPDX-License-Identifier: MIT
// What the host tools and the Debian package change, judged by what it is for: accounts,
// configurations, and a Debian under systemd.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "harness/hosts/container.h"
#include "harness/virtual_terminal.h"
#include "linux/files.h"
#include "linux/tools/administrators.h"
#include "linux/tools/configuration.h"

using namespace HostLinux;

namespace {

namespace fs = std::filesystem;

TEST(Administrators, AreRootAndTheGroup) {
  inNamespaces([] {
    const Harness::TemporaryFolder folder;
    folder.Write("passwd",
                 "toor:x:0:9::/:/bin/sh\nanna:x:10:9::/:/bin/sh\nbert:x:11:27::/:/bin/sh\n"
                 "carl:x:12:9::/:/bin/sh\n");
    folder.Write("group", "sudo:x:27:anna,gone\nsudoers:x:28:carl\n");
    for (const std::string name : {"passwd", "group"})
      ASSERT_TRUE(shell("mount --bind " + (folder.Path() / name).string() + " /etc/" + name));
    std::string may;
    for (const char* name : {"toor", "anna", "bert", "carl", "gone", "", "0"})
      if (mayAdminister(name)) may += std::string(name) + " ";
    EXPECT_EQ(may, "toor anna bert ");
  });
}

// The configuration of a machine in a folder of its own.
class LinuxConfiguration : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* empty : {"corvo/ssl/only-mine", "systemd/network/20-own.network", "hostname",
                              "systemd/network/10-kiva-up.network", "sysctl.d/zz-kiva-ipv6.conf",
                              "systemd/network/10-kiva-up.network.d/more.conf",
                              "network/interfaces.d/eth0", "network/if-up.d/script"})
      folder_.Write(std::string("etc/") + empty, "");
    folder_.Write("etc/corvo/welcome", "mine");
    folder_.Write("etc/shadow", "anna:$6$c:1\nbin:*:1\n");
    folder_.Link("etc/resolv.conf", "../run/resolv.conf");
    folder_.Write("usr/share/kiva/etc-corvo/welcome", "shipped");
    folder_.Write("usr/share/kiva/etc-corvo/options/one", "1\n");
    folder_.Link("usr/share/kiva/etc-corvo/link", "../key");
  }

  Harness::TemporaryFolder folder_;
  const std::string root_ = folder_.Path();
  const Files files_{root_};
};

TEST_F(LinuxConfiguration, IsSavedForRootAlone) {
  folder_.Write("var/lib/corvo/backup/.kiva-staging/archive", "left by a power cut");
  const std::string archive = root_ + saveConfiguration(files_);
  EXPECT_EQ(ended("cd " + root_ + kSavedConfigurations + " && stat -c %a . *").output,
            "700\n600\n");
  EXPECT_FALSE(fs::exists(root_ + kSavedConfigurations + "/.kiva-staging"));
  EXPECT_EQ(ended("tar -tf " + archive + " | grep -v '/$'").output,
            "VERSION\naccounts\netc/corvo/ssl/only-mine\netc/corvo/welcome\n"
            "etc/systemd/network/10-kiva-up.network\n"
            "etc/systemd/network/10-kiva-up.network.d/more.conf\n"
            "etc/systemd/network/20-own.network\netc/sysctl.d/zz-kiva-ipv6.conf\n"
            "etc/hostname\netc/network/interfaces.d/eth0\n");
  fs::create_directory(root_ + "/back");
  EXPECT_EQ(ended("cd " + root_ + "/back && tar -xf " + archive +
                  " && head -n 1 VERSION && cat accounts && diff -r etc/corvo ../etc/corvo")
                .output,
            "version=1\nanna:$6$c:1\n");
}

TEST_F(LinuxConfiguration, TheLastTenAreKept) {
  folder_.Write("var/lib/corvo/backup/configuration-8-2020-01-01.tar", "");
  folder_.Write("var/lib/corvo/backup/mine.tar", "");
  for (int i = 0; i < 10; ++i) saveConfiguration(files_);
  const auto names = files_.List(kSavedConfigurations);
  ASSERT_EQ(names.size(), 11u);
  EXPECT_TRUE(names[0].starts_with("configuration-9-2")) << names[0];
  EXPECT_TRUE(names[9].starts_with("configuration-18-2")) << names[9];
}

TEST_F(LinuxConfiguration, WhatCannotBeSavedIsNotReset) {
  using Case = std::array<const char*, 3>;  // What is wrong, how it is undone, and what is said.
  const Case cases[] = {
      {"mv usr away", "mv away usr", "etc-corvo: is not there"},
      {"mv etc/shadow away", "mv away etc/shadow", "/etc/shadow: cannot be read"},
      {"mkdir -p var/lib/corvo; touch var/lib/corvo/backup", "rm -r var", "Not a directory"},
      {"mkdir -p var/lib; touch var/lib/corvo", "rm -r var", "Not a directory"},
      {"mkdir -p var/lib/corvo/reset/x", "true", "reset: Is a directory"}};
  for (const auto& [fault, undone, text] : cases) {
    ASSERT_TRUE(shell("cd " + root_ + "; " + fault));
    EXPECT_PRED_FORMAT2(testing::IsSubstring, text, failureOf([&] { resetConfiguration(files_); }))
        << fault;
    ASSERT_TRUE(shell("cd " + root_ + "; " + undone));
  }
  EXPECT_EQ(files_.Read("/etc/corvo/welcome"), "mine");
}

TEST_F(LinuxConfiguration, IsResetAtTheNextStartWhereverThePowerWasCut) {
  EXPECT_FALSE(applyReset(files_));
  const char* cuts[] = {"true", "mkdir etc/corvo.reset && touch etc/corvo.reset/half",
                        "mv etc/corvo etc/corvo.reset && cp -a usr/share/kiva/etc-corvo etc/corvo",
                        "rm -r etc/corvo"};
  for (const char* cut : cuts) {
    folder_.Write("etc/corvo/welcome", "mine");
    resetConfiguration(files_);
    EXPECT_EQ(files_.Read("/etc/corvo/welcome"), "mine");
    ASSERT_TRUE(shell("cd " + root_ + "\n" + cut)) << cut;
    EXPECT_TRUE(applyReset(files_));
    EXPECT_TRUE(shell("diff -r --no-dereference " + root_ + "/etc/corvo " + root_ +
                      "/usr/share/kiva/etc-corvo"))
        << cut;
    EXPECT_FALSE(fs::exists(root_ + "/etc/corvo.reset")) << cut;
    EXPECT_FALSE(applyReset(files_)) << "it is done once";
  }
  EXPECT_EQ(files_.List(kSavedConfigurations).size(), std::size(cuts));
  EXPECT_FALSE(files_.Exists("/etc/sysctl.d/zz-kiva-ipv6.conf"));
  EXPECT_EQ(files_.List("/etc/systemd/network"), std::vector<std::string>{"20-own.network"});
}

TEST(LinuxTools, OnADebianUnderSystemd) {
  Container debian("openssh-server openssh-client");
  if (!debian.Obstacle().empty()) GTEST_SKIP() << debian.Obstacle();
  debian.InstallBuild();
  std::optional<Harness::FreeVirtualTerminal> terminal;
  if (std::string reason; Harness::VirtualTerminal::Available(reason))
    debian.Bind(terminal.emplace().Path(), "/dev/tty2");
  else
    std::cout << "not tried, logins on a virtual terminal: " << reason << "\n";
  const auto script = Files().Read(KIVA_SOURCE_DIR "/tests/host/linux_units.sh");
  const Ended how = debian.Run(script.value());
  EXPECT_EQ(how.status, 0) << how.output;
}

TEST(Package, OnADebianUnderSystemd) {
  const char* package = std::getenv("KIVA_PACKAGE");
  if (package == nullptr) GTEST_SKIP() << "no package to try; script/test-package makes one";
  std::string reason;
  if (!Harness::VirtualTerminal::Available(reason)) GTEST_SKIP() << reason;
  const Ended depends = ended(std::string("dpkg-deb -f ") + package +
                              " Depends | sed 's/([^)]*)//g; s/,/ /g' | tr -s ' \\n' ' '");
  Container debian("udev openssh-server " + depends.output);
  if (!debian.Obstacle().empty()) GTEST_SKIP() << debian.Obstacle();

  const Harness::FreeVirtualTerminal terminal;
  debian.Bind(terminal.Path(), "/dev/tty1");
  debian.Bind(std::filesystem::absolute(package), "/kiva.deb");
  const auto script = Files().Read(KIVA_SOURCE_DIR "/tests/host/package.sh");
  const Ended how = debian.Run(script.value());
  EXPECT_EQ(how.status, 0) << how.output;
}

}  // namespace
