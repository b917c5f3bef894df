// SPDX-License-Identifier: MIT
// Password changes through real PAM stacks, and the command behind lockdown mode.
#include <crypt.h>
#include <security/pam_appl.h>
#include <unistd.h>

#include <fstream>

#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "system/lockdown.h"
#include "system/pam_change_password.h"
#include "system/pam_login.h"

namespace {

class PasswordTest : public TestSupport::OnRecordingHost {
 protected:
  PasswordTest() { platform->pamDirectory = folder_.Path().string(); }
  static bool Change(const char* user, const char* from, const char* to) {
    return Kiva::PamChangePassword(user, Kiva::Secret(from), Kiva::Secret(to));
  }
  static int LogIn(const char* user, const char* password) {
    return Kiva::PamLogin(user, Kiva::Secret(password));
  }

  Harness::TemporaryFolder folder_;
};

TEST_F(PasswordTest, EveryStepMayEndIt) {
  const std::string module = HostLinux::matrixModule();
  if (module.empty()) GTEST_SKIP() << "no pam_matrix.so (package libpam-wrapper)";
  const std::string file = (folder_.Path() / "passdb").string();
  const std::string matrix = " required " + module + " verbose passdb=" + file + "\n";
  const struct {
    const char *kind, *answer, *old;
    bool told, rewritten;
  } cases[] = {{"auth", "auth=success", "secret", true, true},
               {"auth", "auth=new_authtok_reqd", "secret", true, true},
               {"account", "acct=new_authtok_reqd", "secret", true, true},
               {"auth", "auth=auth_err", "secret", false, false},
               {"auth", "auth=perm_denied", "secret", false, false},
               {"account", "acct=acct_expired", "secret", false, false},
               {"account", "acct=perm_denied", "secret", false, false},
               {"password", "prechauthtok=try_again", "secret", false, false},
               {"password", "chauthtok=authtok_err", "secret", false, false},
               {"password", "chauthtok=success", "Secret", false, false},
               {"auth", "cred=cred_err", "secret", false, true}};
  for (const auto& [kind, answer, old, told, rewritten] : cases) {
    SCOPED_TRACE(answer);
    std::string stack;
    for (const std::string one : {"auth", "account", "password"})
      stack += one + " requisite pam_debug.so " + (one == kind ? answer : "") + "\n";
    folder_.Write("passdb", "anna:secret:kiva\n");
    folder_.Write("kiva", stack + "password" + matrix);
    EXPECT_EQ(Change("anna", old, "fresh"), told);
    folder_.Write("kiva", "auth" + matrix + "account" + matrix);
    EXPECT_EQ(LogIn("anna", "fresh"), rewritten ? PAM_SUCCESS : PAM_AUTH_ERR);
  }
}

TEST_F(PasswordTest, ReallyChangesAnAccountOfTheMachine) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may change accounts";
  const std::string module = " required pam_unix.so nodelay\n";
  folder_.Write("kiva", "auth" + module + "account" + module + "password" + module);
  HostLinux::inNamespaces([] {
    ASSERT_TRUE(
        HostLinux::shell("mount -t tmpfs tmpfs /mnt; cp -a /etc/. /mnt; "
                         "mount --bind /mnt /etc"));
    for (const auto& [user, changed, status] : {std::tuple{"kiva-fresh", "20000", PAM_SUCCESS},
                                                {"kiva-expired", "0", PAM_NEW_AUTHTOK_REQD}}) {
      std::ofstream("/etc/passwd", std::ios::app) << user << ":x:4711:4711::/:/bin/false\n";
      std::ofstream("/etc/shadow", std::ios::app)
          << user << ":" << crypt("old-secret", "$6$salt$") << ":" << changed << ":0:99999:7:::\n";
      EXPECT_EQ(LogIn(user, "old-secret"), status);
      EXPECT_FALSE(Change(user, "old-Secret", "brand-New-72"));
      EXPECT_EQ(LogIn(user, "old-secret"), status);
      EXPECT_TRUE(Change(user, "old-secret", "brand-New-72"));
      EXPECT_EQ(LogIn(user, "brand-New-72"), PAM_SUCCESS);
      EXPECT_EQ(LogIn(user, "old-secret"), PAM_AUTH_ERR);
    }
  });
}

TEST_F(PasswordTest, LockdownIsLoggedHoweverTheToolEnds) {
  const std::string failed = "log.3 Disabling lockdown mode failed with error: ";
  const std::string died = "log.3 Run Command did not terminate normally";
  const struct {
    const char* script;
    bool done;
    std::vector<std::string> lines;
  } cases[] = {
      {"echo told; echo warned >&2", true, {"log.6 Lockdown mode disabled"}},
      {"echo told; printf refused >&2; exit 255", false, {failed + "refused"}},
      {"head -c 300 /dev/zero | tr '\\0' y >&2; exit 1", false, {failed + std::string(255, 'y')}},
      {"kill -9 $$", false, {died, failed}},
      {"", false, {failed}}};
  for (auto one : cases) {
    platform->Clear();
    platform->scripts["/bin/hmx-cmd"] = one.script;
    EXPECT_EQ(Kiva::switchLockdown(Kiva::Lockdown::Off), one.done);
    one.lines.insert(one.lines.begin(),
                     "run /bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_mode_exit");
    EXPECT_EQ(platform->Lines(), one.lines);
  }
}

}  // namespace
