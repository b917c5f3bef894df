// SPDX-License-Identifier: MIT
// Logins and changes of a password through real PAM stacks, also the one that the package brings.
#include "system/pam_login.h"

#include <crypt.h>
#include <sanitizer/lsan_interface.h>
#include <security/pam_appl.h>
#include <unistd.h>

#include <fstream>

#include "core/session.h"
#include "core/smart_card.h"
#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "system/authentication.h"
#include "system/login_state.h"
#include "system/pam_change_password.h"

namespace {

using Kiva::Secret;
using Lines = std::vector<std::string>;

int logIn(const char* user, const char* password) {
  return Kiva::PamLogin(user, Secret(password));
}

class LoginTest : public TestSupport::OnRecordingHost {
 protected:
  LoginTest() {
    platform->pamDirectory = folder_.Path().string();
    Kiva::session() = {};
  }
  void UseStack(const std::string& stack) const { folder_.Write("kiva", stack); }

  Harness::TemporaryFolder folder_;
};

class PamLoginTest : public LoginTest {
 protected:
  void SetUp() override {
    if (matrix_.empty()) GTEST_SKIP() << "no pam_matrix.so (package libpam-wrapper)";
    folder_.Write("passdb", "anna:secret:kiva\nbert:secret:other\nemil::kiva\n");
  }

  std::string Matrix(const std::string& options = "") const {
    return matrix_ + " passdb=" + (folder_.Path() / "passdb").string() + " " + options + "\n";
  }
  static std::string Debug(const std::string& options = "") {
    return "pam_debug.so " + options + "\n";
  }

  const std::string matrix_ = HostLinux::matrixModule();
};

TEST_F(PamLoginTest, StatusOfTheStack) {
  const auto stack = [](const std::string& authenticates, const std::string& admits) {
    return "auth required " + authenticates + "account required " + admits;
  };
  const std::string permit = Debug();
  const std::tuple<const char*, const char*, const char*, std::string, int> cases[] = {
      {"right", "anna", "secret", stack(Matrix(), Matrix()), 0},
      {"wrong password", "anna", "Secret", stack(Matrix(), permit), PAM_AUTH_ERR},
      {"not for this service", "bert", "secret", stack(Matrix(), Matrix()), PAM_PERM_DENIED},
      {"account expired after a good password", "anna", "secret",
       stack(Matrix(), Debug("acct=new_authtok_reqd")), PAM_NEW_AUTHTOK_REQD},
      {"messages around the prompt", "anna", "secret", stack(Matrix("verbose"), permit), 0},
      {"visible question", "anna", "secret", stack(Matrix("echo"), permit), PAM_CRED_ERR},
      {"two hidden questions", "anna", "secret",
       stack(Matrix() + "auth required " + Matrix(), permit), PAM_CRED_ERR},
      {"no such module", "anna", "secret", stack("pam_no_such_module.so\n", permit),
       PAM_MODULE_UNKNOWN}};
  for (const auto& [name, user, secret, services, status] : cases) {
    UseStack(services);
    EXPECT_EQ(logIn(user, secret), status) << name;
  }
}

TEST_F(PamLoginTest, NoServiceNoLogin) {
#ifdef __SANITIZE_ADDRESS__
  // The library forgets two small blocks of its own when it finds no service file.
  const __lsan::ScopedDisabler theirs;
#endif
  EXPECT_NE(logIn("anna", "secret"), PAM_SUCCESS);
  platform->pamDirectory = "/no/such/folder";
  EXPECT_NE(logIn("anna", "secret"), PAM_SUCCESS);
}

TEST_F(PamLoginTest, LeavesItsTracesInTheSession) {
  using enum Kiva::Authentication;
  driver->slots = {{"reader 1", std::nullopt}, {"reader 2", {{"card", "anna"}}}};
  const std::tuple<std::string, Kiva::Authentication, const char*> cases[] = {
      {"success", Accepted, "anna"},
      {"perm_denied", NoPermission, "before"},
      {"new_authtok_reqd", PasswordExpired, "anna"},
      {"acct_expired", Failed, "before"}};
  for (const auto& [account, outcome, user] : cases) {
    UseStack("auth required " + Matrix() + "account required " + Debug("acct=" + account));
    Kiva::session() = {};
    Kiva::session().user = "before";
    EXPECT_EQ(Kiva::authenticate("anna", Secret("secret")), outcome) << account;
    EXPECT_EQ(Kiva::session().user, user) << account;
    EXPECT_EQ(Kiva::session().bySmartCard, Kiva::session().user == "anna") << account;
  }
}

TEST_F(PamLoginTest, EveryStepMayEndAChangeOfPassword) {
  const std::string matrix = " required " + Matrix("verbose");
  const std::tuple<const char*, const char*, const char*, bool, bool> cases[] = {
      {"auth", "auth=success", "secret", true, true},
      {"auth", "auth=new_authtok_reqd", "secret", true, true},
      {"account", "acct=new_authtok_reqd", "secret", true, true},
      {"auth", "auth=auth_err", "secret", false, false},
      {"account", "acct=acct_expired", "secret", false, false},
      {"password", "prechauthtok=try_again", "secret", false, false},
      {"password", "chauthtok=authtok_err", "secret", false, false},
      {"password", "chauthtok=success", "Secret", false, false},
      {"auth", "cred=cred_err", "secret", false, true}};
  for (const auto& [kind, answer, old, told, rewritten] : cases) {
    SCOPED_TRACE(answer);
    std::string stack;
    for (const std::string one : {"auth", "account", "password"})
      stack += one + " requisite " + Debug(one == kind ? answer : "");
    folder_.Write("passdb", "anna:secret:kiva\n");
    UseStack(stack + "password" + matrix);
    EXPECT_EQ(Kiva::PamChangePassword("anna", Secret(old), Secret("fresh")), told);
    UseStack("auth" + matrix + "account" + matrix);
    EXPECT_EQ(logIn("anna", "fresh"), rewritten ? PAM_SUCCESS : PAM_AUTH_ERR);
  }
}

constexpr int kWrong = PAM_SYSTEM_ERR;  // what pam_exec makes of a program that refuses

// The shipped service over stand-ins for the card and for the machine's own accounts, which both
// learn the answer as real modules do.
class PamStackTest : public LoginTest {
 protected:
  void SetUp() override {
    folder_.Write("passwords", "secret\n12345678\n4711471147114\n");
    folder_.Write("card", "#!/bin/sh\ntouch '" + Path("asked") + "'\nexec grep -qzx 4711\n");
    std::filesystem::permissions(Path("card"), std::filesystem::perms::owner_all);
  }

  std::string Path(const char* name) const { return (folder_.Path() / name).string(); }

  void UseShipped(const std::string& card) const {
    const std::string asks = "pam_exec.so quiet expose_authtok ";
    std::string text = Harness::contentOf(KIVA_SOURCE_DIR "/packaging/etc/pam.d/kiva");
    for (const auto& [ours, here] :
         {std::pair<std::string, std::string>{"/usr/lib/kiva", KIVA_BINARY_DIR "/../lib/kiva"},
          {"pam_p11.so libp11-kit.so.0", card.empty() ? asks + Path("card") : card},
          {"@include common-auth",
           "auth required " + asks + "/bin/grep -qzxFf " + Path("passwords")},
          {"@include common-account", "account required pam_permit.so"},
          {"@include common-password", "password required pam_permit.so"}}) {
      auto at = text.find(ours);
      ASSERT_NE(at, std::string::npos) << ours;
      for (; at != std::string::npos; at = text.find(ours, at + here.size()))
        text.replace(at, ours.size(), here);
    }
    UseStack(text);
  }
};

TEST_F(PamStackTest, TriesTheCardWithWhatMayBeAPinAndAdmitsAdministratorsAlone) {
  const std::string card, none = "pam_no_such_module.so";
  const std::tuple<std::string, const char*, const char*, int, bool> cases[] = {
      {card, "root", "4711", 0, true},          {card, "root", "secret", 0, false},
      {card, "root", "12345678", 0, true},      {card, "root", "4711471147114", 0, false},
      {card, "root", "0815", kWrong, true},     {card, "root", "471", kWrong, false},
      {card, "root", "wrong", kWrong, false},   {card, "root", "", kWrong, false},
      {none, "root", "secret", 0, false},       {none, "root", "12345678", 0, false},
      {none, "root", "wrong", kWrong, false},   {card, "nobody", "secret", PAM_PERM_DENIED, false},
      {card, "nobody", "wrong", kWrong, false}, {card, "gone", "secret", PAM_PERM_DENIED, false}};
  for (const auto& [module, user, secret, status, asked] : cases) {
    UseShipped(module);
    std::filesystem::remove(Path("asked"));
    EXPECT_EQ(logIn(user, secret), status) << user << " " << secret;
    EXPECT_EQ(std::filesystem::exists(Path("asked")), asked) << user << " " << secret;
  }
}

TEST_F(LoginTest, ReallyChangesAnAccountOfTheMachine) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may change accounts";
  const std::string module = " required pam_unix.so nodelay\n";
  UseStack("auth" + module + "account" + module + "password" + module);
  HostLinux::inNamespaces([] {
    ASSERT_TRUE(
        HostLinux::shell("mount -t tmpfs none /mnt; cp -a /etc/. /mnt; mount --bind /mnt /etc"));
    for (const auto& [user, changed, status] : {std::tuple{"kiva-fresh", "20000", PAM_SUCCESS},
                                                {"kiva-expired", "0", PAM_NEW_AUTHTOK_REQD}}) {
      std::ofstream("/etc/passwd", std::ios::app) << user << ":x:4711:4711::/:/bin/false\n";
      std::ofstream("/etc/shadow", std::ios::app)
          << user << ":" << crypt("old-secret", "$6$salt$") << ":" << changed << ":0:99999:7:::\n";
      for (const char* old : {"old-Secret", "old-secret"}) {
        EXPECT_EQ(logIn(user, "old-secret"), status);
        EXPECT_EQ(Kiva::PamChangePassword(user, Secret(old), Secret("brand-New-72")),
                  old[4] == 's');
      }
      EXPECT_EQ(logIn(user, "brand-New-72"), PAM_SUCCESS);
      EXPECT_EQ(logIn(user, "old-secret"), PAM_AUTH_ERR);
    }
  });
}

TEST_F(LoginTest, ACardIsFoundBeforeAndStaysInAnySlotDuringASession) {
  driver->slots = {{"empty", std::nullopt}, {"no account", {{"x", ""}}}, {"good", {{"y", "anna"}}}};
  Kiva::checkSmartCard();
  EXPECT_TRUE(Kiva::HasSmartCardUserId());
  EXPECT_EQ(Kiva::session().smartCardUserId, "anna");
  driver->failing = "GetToken";
  Kiva::checkSmartCard();
  EXPECT_FALSE(Kiva::HasSmartCardUserId());
  const Lines lines = {"log.6 Found smart card with user id 'anna'",
                       "log.3 Error trying to lookup smart card tokens."};
  EXPECT_EQ(platform->Lines(), lines);
  driver->failing.clear();
  Kiva::session() = {.active = true, .user = "anna", .bySmartCard = true, .smartCardUserId = {}};
  driver->slots[0] = {"other", {{"x", "bert"}}};
  const auto check = [] { Kiva::checkSmartCard(), _exit(7); };  // it would end the program itself
  EXPECT_EXIT(check(), testing::ExitedWithCode(7), "");
}

}  // namespace
