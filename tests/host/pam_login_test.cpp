// SPDX-License-Identifier: MIT
#include "system/pam_login.h"

#include <sanitizer/lsan_interface.h>
#include <security/pam_appl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/session.h"
#include "core/smart_card.h"
#include "system/authentication.h"
#include "system/login_state.h"
#include "tests/support/recording_platform.h"

namespace {

using Kiva::Secret;
using Lines = std::vector<std::string>;

std::string matrixModule() {
  for (const char* folder : {"/usr/lib/x86_64-linux-gnu", "/usr/lib/aarch64-linux-gnu", "/usr/lib"})
    if (const auto path = std::string(folder) + "/pam_wrapper/pam_matrix.so";
        std::filesystem::exists(path))
      return path;
  return {};
}

class PamLoginTest : public TestSupport::OnRecordingHost {
 protected:
  void SetUp() override {
    matrix_ = matrixModule();
    if (matrix_.empty()) GTEST_SKIP() << "no pam_matrix.so (package libpam-wrapper)";
    platform->pamDirectory = folder_.Path().string();
    folder_.Write("passdb", "anna:secret:kiva\nbert:secret:other\nemil::kiva\n");
    Kiva::session() = {};
  }

  std::string Matrix(const std::string& options = "") const {
    return matrix_ + " passdb=" + (folder_.Path() / "passdb").string() + " " + options + "\n";
  }
  std::string Debug(const std::string& options) const { return "pam_debug.so " + options + "\n"; }
  void UseStack(const std::string& stack) const { folder_.Write("kiva", stack); }
  void UseMatrix() const { UseStack("auth required " + Matrix() + "account required " + Matrix()); }

  std::string matrix_;
  Harness::TemporaryFolder folder_;
};

TEST_F(PamLoginTest, StatusOfTheStack) {
  const std::string permit = "account required " + Debug("");
  struct Case {
    const char* name;
    std::string stack, user, secret;
    int status;
  };
  const Case cases[] = {
      {"right", "auth required " + Matrix() + "account required " + Matrix(), "anna", "secret", 0},
      {"wrong password", "auth required " + Matrix() + permit, "anna", "Secret", PAM_AUTH_ERR},
      {"not for this service", "auth required " + Matrix() + "account required " + Matrix(), "bert",
       "secret", PAM_PERM_DENIED},
      {"account expired after a good password",
       "auth required " + Matrix() + "account required " + Debug("acct=new_authtok_reqd"), "anna",
       "secret", PAM_NEW_AUTHTOK_REQD},
      {"no account check after a bad one",
       "auth required " + Debug("auth=auth_err") + "account required " + Debug("acct=success"),
       "anna", "secret", PAM_AUTH_ERR},
      {"messages around the prompt", "auth required " + Matrix("verbose") + permit, "anna",
       "secret", 0},
      {"visible question", "auth required " + Matrix("echo") + permit, "anna", "secret",
       PAM_CRED_ERR},
      {"two hidden questions", "auth required " + Matrix() + "auth required " + Matrix() + permit,
       "anna", "secret", PAM_CRED_ERR},
      {"no such module", "auth required pam_no_such_module.so\n" + permit, "anna", "secret",
       PAM_MODULE_UNKNOWN},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    UseStack(one.stack);
    EXPECT_EQ(Kiva::PamLogin(one.user, Secret(one.secret)), one.status);
  }
}

TEST_F(PamLoginTest, NoServiceNoLogin) {
#ifdef __SANITIZE_ADDRESS__
  // The library forgets two small blocks of its own when it finds no service file.
  const __lsan::ScopedDisabler theirs;
#endif
  EXPECT_NE(Kiva::PamLogin("anna", Secret("secret")), PAM_SUCCESS);
  platform->pamDirectory = "/no/such/folder";
  EXPECT_NE(Kiva::PamLogin("anna", Secret("secret")), PAM_SUCCESS);
}

TEST_F(PamLoginTest, AcceptedLogin) {
  UseMatrix();
  driver->slots = {{"reader 1", std::nullopt}, {"reader 2", {{"card", "anna"}}}};
  EXPECT_EQ(Kiva::authenticate("anna", Secret("secret")), Kiva::Authentication::Accepted);
  EXPECT_EQ(platform->Lines(), (Lines{"log.32 Authentication of user anna succeeded",
                                      "log.6 User anna logged in", "audit login.connect anna 1"}));
  EXPECT_EQ(Kiva::session().user, "anna");
  EXPECT_TRUE(Kiva::session().bySmartCard);
  EXPECT_FALSE(Kiva::session().emptyPassword);

  UseStack("auth required " + Debug("auth=success") + "account required " + Debug("acct=success"));
  EXPECT_EQ(Kiva::authenticate("emil", Secret()), Kiva::Authentication::Accepted);
  EXPECT_FALSE(Kiva::session().bySmartCard);
  EXPECT_TRUE(Kiva::session().emptyPassword);
}

TEST_F(PamLoginTest, Refusals) {
  using Kiva::Authentication;
  struct Case {
    std::string account;
    Authentication outcome;
    std::string line, reason, event, userAfter;
  };
  const Case cases[] = {
      {"perm_denied", Authentication::NoPermission, "Access denied for user anna", "No permission",
       "Access denied for user anna", "before"},
      {"new_authtok_reqd", Authentication::PasswordExpired, "Password has expired for user anna",
       "Password expired", "Access denied for user anna", "anna"},
      {"acct_expired", Authentication::Failed, "Authentication of user anna failed",
       "Invalid Login", "Authentication of user anna failed", "before"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.account);
    UseStack("auth required " + Matrix() + "account required " + Debug("acct=" + one.account));
    platform->Clear();
    Kiva::session().user = "before";
    EXPECT_EQ(Kiva::authenticate("anna", Secret("secret")), one.outcome);
    EXPECT_EQ(Kiva::session().user, one.userAfter);
    EXPECT_EQ(platform->Lines(),
              (Lines{"log.35 " + one.line, "audit login.connect anna 0 reason=" + one.reason,
                     "log.6 Initializing evbuser library",
                     "event @&!*@*@(evb.user.kiva.login.failed)" + one.event, "event closed"}));
  }
}

class SmartCardTest : public TestSupport::OnRecordingHost {
 protected:
  SmartCardTest() { Kiva::session() = {}; }
};

TEST_F(SmartCardTest, FoundBeforeLogin) {
  driver->slots = {{"empty", std::nullopt}, {"no account", {{"x", ""}}}, {"good", {{"y", "anna"}}}};
  Kiva::checkSmartCard();
  EXPECT_TRUE(Kiva::HasSmartCardUserId());
  EXPECT_EQ(Kiva::session().smartCardUserId, "anna");
  driver->failing = "GetToken";
  Kiva::checkSmartCard();
  EXPECT_FALSE(Kiva::HasSmartCardUserId());
  EXPECT_EQ(platform->Lines(), (Lines{"log.6 Found smart card with user id 'anna'",
                                      "log.3 Error trying to lookup smart card tokens."}));
}

TEST_F(SmartCardTest, TakenOutDuringSession) {
  Kiva::session().active = true;
  Kiva::session().user = "anna";
  Kiva::checkSmartCard();
  Kiva::session().bySmartCard = true;
  driver->slots = {{"1", {{"x", "bert"}}}, {"2", {{"y", "anna"}}}};
  Kiva::checkSmartCard();
  EXPECT_EQ(platform->Lines(), Lines{});

  driver->slots.pop_back();
  const pid_t child = fork();
  if (child == 0) {
    std::atexit([] { _exit(Kiva::session().user == "anna" ? 17 : 18); });
    Kiva::checkSmartCard();
    _exit(1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), 17) << "left through exit, so that the terminal is restored";
}

TEST_F(SmartCardTest, MarkerOpensTheConsole) {
  Harness::TemporaryFolder folder;
  platform->root = folder.Path();
  EXPECT_FALSE(Kiva::IsConsoleLoginShown());
  folder.Write("var/run/corvo/show-kiva-login", "");
  EXPECT_TRUE(Kiva::IsConsoleLoginShown());
}

}  // namespace
