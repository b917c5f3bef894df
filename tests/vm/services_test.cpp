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

TEST_F(VmServices, LetSshInWhenSwitchedOn) {
  EXPECT_FALSE(SshLetsIn());
  LogIn();
  Choose("Troubleshooting Options");
  Choose("Enable SSH");
  machine_->WaitFor("Disable SSH");
  WaitForSuccess("sh /etc/init.d/SSH status");
  EXPECT_EQ(Shell("systemctl is-enabled ssh"), "enabled");
  EXPECT_TRUE(SshLetsIn());

  Choose("Disable SSH");
  machine_->WaitFor("Enable SSH");
  WaitForSuccess("! sh /etc/init.d/SSH status");
  Shell("! systemctl is-enabled ssh");
  EXPECT_FALSE(SshLetsIn());
}

TEST_F(VmServices, RefuseSshInLockdown) {
  Shell("systemctl start ssh && find /etc /var/lib -type f -exec md5sum {} + | sort >/tmp/before");
  EXPECT_TRUE(SshLetsIn());
  for (const bool letsIn : {false, true}) {
    LogIn();
    Choose("Configure Lockdown Mode");
    machine_->Do({"wait:Enable lockdown mode", "Space", "Enter", "gone:Enable lockdown mode"});
    EXPECT_EQ(SshLetsIn(), letsIn);
    LogOut();
  }
  Shell("find /etc /var/lib -type f -exec md5sum {} + | sort | diff /tmp/before -");
}

TEST_F(VmServices, OpenTheLoginShellsWhenSwitchedOn) {
  LogIn();
  Choose("Troubleshooting Options");
  Choose("Enable Halo Shell");
  machine_->Do({"wait:Disable Halo Shell", "Alt-F2", "wait:server login:", "Alt-F1"});
  Choose("Disable Halo Shell");
  machine_->Do({"wait:Enable Halo Shell", "Alt-F2", "gone:server login:"});
}

TEST_F(VmServices, LeaveTheTerminalToItsLoginWhenRemoved) {
  Shell("dpkg --purge kiva");
  machine_->WaitFor("server login:");
  EXPECT_EQ(Shell("find / -xdev -not -path '/var/log/*' \\( -name '*kiva*' -o -name corvo \\)"),
            "");
}

}  // namespace
