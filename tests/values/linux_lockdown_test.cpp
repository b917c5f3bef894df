// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "linux/tools/lockdown.h"
#include "linux/tools/remote_logins.h"
#include "linux/tools/services.h"
#include "linux/tools/units.h"

using namespace HostLinux;

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

using Tree = std::map<std::string, std::pair<fs::perms, std::string>>;

class Lockdown : public testing::Test, protected Harness::TemporaryFolder {
 protected:
  Lockdown() {
    Write("etc/pam.d/sshd", "# comment\n\nauth required pam_unix.so\naccount required pam_unix.so");
    Write("etc/pam.d/cockpit", "");
    fs::permissions(Path() / "etc/pam.d/cockpit", fs::perms{0640});
    Write("etc/pam.d/kiva", "");
    Write("etc/corvo/lockdown-exceptions",
          "# who may\nroot\nanna # at night\n*\nbert,!eve\n-x\n\nDenyUsers eve\ncarl\r\n");
    Write("etc/ssh/sshd_config", "Port 22\nInclude " + root_ + "/etc/ssh/sshd_config.d/*.conf\n");
    Write("etc/ssh/sshd_config.d/own.conf", "AllowUsers eve\n");
    UseSshServer("exit 0");
  }

  /// Puts a script in the place of the SSH server.
  void UseSshServer(const std::string& script) const {
    Write("usr/sbin/sshd", "#!/bin/sh\n" + script + "\n");
    fs::permissions(Path() / "usr/sbin/sshd", fs::perms{0755});
  }
  Tree Now() const {
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(Path()))
      if (entry.is_regular_file())
        tree[entry.path()] = {entry.status().permissions(), *Files().Read(entry.path())};
    return tree;
  }
  void Restore(const Tree& tree, const std::string& path) const {
    const auto file = tree.find(path);
    if (file == tree.end())
      fs::remove(path);
    else
      std::ofstream(path) << file->second.second;
  }
  std::string Refusal() const {
    return failureOf([&] { setLockdown(files_, true); });
  }

  const std::string root_ = Path();
  const Files files_{root_};
};

TEST_F(Lockdown, ChangesFourFilesAndHealsEveryHalfState) {
  const Tree before = Now();
  setLockdown(files_, true);
  const Tree locked = Now();
  EXPECT_EQ(files_.Read("/var/lib/corvo/lockdown"), "root\nanna\ncarl\n");
  const auto ssh = files_.Read("/etc/ssh/sshd_config.d/lockdown.conf").value_or("");
  EXPECT_TRUE(ssh.ends_with("\nMatch User *,!root,!anna,!carl\n  DenyUsers *\n")) << ssh;
  int changed = 0;
  for (const auto& [path, state] : locked) {
    if (const auto was = before.find(path); was != before.end() && was->second == state) continue;
    SCOPED_TRACE(path);
    ++changed;
    for (const bool enabled : {true, false, true}) {
      Restore(before, path);
      EXPECT_FALSE(isLockdownEnabled(files_));
      setLockdown(files_, enabled);
      EXPECT_EQ(Now(), enabled ? locked : before);
      EXPECT_EQ(isLockdownEnabled(files_), enabled);
    }
  }
  EXPECT_EQ(changed, 4);
  Write("etc/pam.d/vsftpd", "account required pam_unix.so\n");
  EXPECT_FALSE(isLockdownEnabled(files_)) << "a way in that came later";
  setLockdown(files_, true);
  Write("etc/pam.d/sshd", "account sufficient pam_permit.so\n" + *files_.Read("/etc/pam.d/sshd"));
  EXPECT_FALSE(isLockdownEnabled(files_)) << "a line before ours may let everybody in";
}

TEST_F(Lockdown, FailuresOpenNothingAndSayWhy) {
  UseSshServer("test ! -e " + root_ +
               "/etc/ssh/sshd_config.d/lockdown.conf || { echo no; exit 1; }");
  const Tree before = Now();
  EXPECT_EQ(Refusal(), "EnterLockdown /etc/ssh/sshd_config.d/lockdown.conf: no");
  EXPECT_EQ(Now(), before);
  UseSshServer("echo no host keys; exit 1");
  EXPECT_EQ(Refusal(), "") << "it complained before";
  const Tree locked = Now();
  fs::create_directory(root_ + "/etc/pam.d/rsh");
  EXPECT_EQ(Refusal(), "EnterLockdown " + root_ + "/etc/pam.d/rsh: cannot be read");
  EXPECT_EQ(Now(), locked);
  const std::string include = "Include " + root_ + "/etc/ssh/sshd_config.d/*.conf\n";
  for (const std::string& text : Lines{"", "#" + include, "match User x\n" + include}) {
    Write("etc/ssh/sshd_config", text);
    EXPECT_NE(Refusal().find("does not include"), std::string::npos) << text;
  }
}

TEST(LinuxUnits, NamesOfAgentsAndStateAsSystemdShowsIt) {
  EXPECT_EQ(parseAgents("# ours\n a.service \nb@1 # x\n--now\n../x.service\na b\n*\n\nc.socket"),
            (Lines{"a.service", "b@1.service", "c.socket"}));
  const std::pair<const char*, Unit> cases[] = {
      {"LoadState=loaded\nActiveState=active\nUnitFileState=enabled\n", {"u", true, true, true}},
      {"LoadState=loaded\nActiveState=reloading\nUnitFileState=enabled-runtime\nSourcePath=\n",
       {"u", true, true, true}},
      {"LoadState=masked\nActiveState=inactive\nUnitFileState=masked\n", {"u"}},
      {"LoadState=loaded\nActiveState=active\nUnitFileState=generated\nSourcePath=/etc/init.d/u\n",
       {"u"}},
      {"", {"u"}}};
  for (const auto& [text, unit] : cases) EXPECT_EQ(parseUnit("u", text), unit) << text;
}

}  // namespace
