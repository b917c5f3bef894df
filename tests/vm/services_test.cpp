// SPDX-License-Identifier: MIT
// What the package is to a real init system.
#include "tests/vm/installed_machine.h"

namespace {

class VmServices : public InstalledMachine {};

TEST_F(VmServices, ComesBackAfterItsEnd) {
  machine_->WaitFor(kWelcome);
  const std::string before = Shell("cat /run/kiva.pid");
  for (const char* end : {"TERM", "KILL"}) {
    Shell(std::string("systemctl kill --kill-whom=main -s ") + end + " kiva@tty1");
    WaitForShell("kill -0 $(cat /run/kiva.pid) && test \"$(cat /run/kiva.pid)\" != " + before);
    machine_->WaitFor(kWelcome);
  }
}

TEST_F(VmServices, KeepsTheLinesOfTheKernelOffTheScreen) {
  machine_->WaitFor(kWelcome);
  Shell("echo '<1>the sky is falling' >/dev/kmsg; dmesg | grep falling");
  machine_->Do({"F2", "wait:Authentication Required"});
  EXPECT_FALSE(machine_->Look().Shows("falling")) << machine_->Look().Dump();
}

TEST_F(VmServices, LeavesTheTerminalToItsLoginWhenRemoved) {
  Shell("dpkg --purge kiva");
  machine_->WaitFor("server login:");
  EXPECT_EQ(Shell("find / -xdev -name '*kiva*' -not -path '/var/log/*' -o -xdev -path /etc/corvo"), "");
}

}  // namespace
