// SPDX-License-Identifier: MIT
// What the host tools and the Debian package change, judged by what it is for: accounts, and a
// Debian under systemd.
#include <gtest/gtest.h>

#include <cstdlib>

#include "harness/hosts/container.h"
#include "harness/virtual_terminal.h"
#include "linux/files.h"
#include "linux/tools/administrators.h"

using namespace HostLinux;

namespace {

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
