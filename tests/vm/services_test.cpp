// SPDX-License-Identifier: MIT
// What the package is to a real init system, and its services to the world outside.
#include "harness/vm/installed_machine.h"

namespace {

class VmServices : public InstalledMachine {};

TEST_F(VmServices, ComeBackAfterEveryEnd) {
  for (const char* end : {"TERM", "KILL", "WINCH"}) {
    const std::string before = Shell("cat /run/kiva.pid");
    Shell(std::string("systemctl kill --kill-whom=main -s ") + end + " kiva@tty1");
    WaitForSuccess("test \"$(cat /run/kiva.pid)\" != " + before +
                   " && kill -0 $(cat /run/kiva.pid)");
    machine_->WaitFor(kWelcome);
  }
}

TEST_F(VmServices, KeepTheLinesOfTheKernelOffTheScreen) {
  const Harness::Screen before = machine_->WaitFor(kWelcome);
  Shell("echo '<1>the sky is falling' >/dev/kmsg; dmesg | grep falling");
  EXPECT_EQ(machine_->Look(), before);
}

TEST_F(VmServices, SwitchSshOnAndOff) {
  ExpectSsh(kSshSilent);
  LogIn();
  Choose("Troubleshooting Options");
  Choose("Enable SSH");
  machine_->WaitFor("Disable SSH");
  WaitForSuccess("sh /etc/init.d/SSH status");
  EXPECT_EQ(Shell("systemctl is-enabled ssh"), "enabled");
  ExpectSsh(kSshIn);

  Choose("Disable SSH");
  machine_->WaitFor("Enable SSH");
  WaitForSuccess("! sh /etc/init.d/SSH status");
  Shell("! systemctl is-enabled ssh");
  ExpectSsh(kSshSilent);
}

TEST_F(VmServices, RefuseSshInLockdown) {
  Shell(
      "systemctl start ssh && find /etc /var/lib/corvo -type f -exec md5sum {} + | sort "
      ">/tmp/before");
  ExpectSsh(kSshIn);
  for (const char* answer : {kSshRefuses, kSshIn}) {
    LogIn();
    Choose("Configure Lockdown Mode");
    machine_->Do({"wait:Enable lockdown mode", "Space", "Enter", "gone:Enable lockdown mode"});
    ExpectSsh(answer);
    LogOut();
  }
  Shell("find /etc /var/lib/corvo -type f -exec md5sum {} + | sort | diff /tmp/before -");
}

TEST_F(VmServices, OpenAndCloseTheLoginShells) {
  LogIn();
  Choose("Troubleshooting Options");
  Choose("Disable Halo Shell");
  machine_->Do({"wait:Enable Halo Shell", "Alt-F2", "gone:Halo Shell"});
  Shell("systemctl start getty@tty2; ! systemctl is-active getty@tty2");
  EXPECT_FALSE(machine_->Look().Shows("login:")) << machine_->Look().Dump();
  machine_->Press("Alt-F1");
  Choose("Enable Halo Shell");
  machine_->Do({"wait:Disable Halo Shell", "Alt-F2", "wait:server login:"});
}

TEST_F(VmServices, LeaveTheTerminalToItsLoginWhenRemoved) {
  Shell("dpkg --purge kiva");
  machine_->WaitFor("server login:");
}

}  // namespace
