// SPDX-License-Identifier: MIT
// The Debian package in a small Debian under systemd: installed, made newer, removed and purged.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "harness/hosts/container.h"
#include "harness/virtual_terminal.h"
#include "linux/files.h"

using namespace HostLinux;

namespace {

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
