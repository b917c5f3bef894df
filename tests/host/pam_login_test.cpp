// SPDX-License-Identifier: MIT
#include "system/pam_login.h"

#include <sanitizer/lsan_interface.h>
#include <security/pam_appl.h>

#include "core/session.h"
#include "core/smart_card.h"
#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "system/authentication.h"
#include "system/login_state.h"

namespace {

using Kiva::Secret;
using Lines = std::vector<std::string>;

class PamLoginTest : public TestSupport::OnRecordingHost {
 protected:
  void SetUp() override {
    matrix_ = HostLinux::matrixModule();
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

  std::string matrix_;
  Harness::TemporaryFolder folder_;
};

TEST_F(PamLoginTest, StatusOfTheStack) {
  const auto stack = [](const std::string& authenticates, const std::string& admits) {
    return "auth required " + authenticates + "account required " + admits;
  };
  const std::string permit = Debug("");
  const struct {
    const char *name, *user, *secret;
    std::string stack;
    int status;
  } cases[] = {
      {"right", "anna", "secret", stack(Matrix(), Matrix()), 0},
      {"wrong password", "anna", "Secret", stack(Matrix(), permit), PAM_AUTH_ERR},
      {"not for this service", "bert", "secret", stack(Matrix(), Matrix()), PAM_PERM_DENIED},
      {"account expired after a good password", "anna", "secret",
       stack(Matrix(), Debug("acct=new_authtok_reqd")), PAM_NEW_AUTHTOK_REQD},
      {"no account check after a bad one", "anna", "secret",
       stack(Debug("auth=auth_err"), Debug("acct=success")), PAM_AUTH_ERR},
      {"messages around the prompt", "anna", "secret", stack(Matrix("verbose"), permit), 0},
      {"visible question", "anna", "secret", stack(Matrix("echo"), permit), PAM_CRED_ERR},
      {"two hidden questions", "anna", "secret",
       stack(Matrix() + "auth required " + Matrix(), permit), PAM_CRED_ERR},
      {"no such module", "anna", "secret", stack("pam_no_such_module.so\n", permit),
       PAM_MODULE_UNKNOWN}};
  for (const auto& one : cases) {
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

TEST_F(PamLoginTest, LeavesItsTracesInTheSession) {
  using enum Kiva::Authentication;
  driver->slots = {{"reader 1", std::nullopt}, {"reader 2", {{"card", "anna"}}}};
  for (const auto& [account, outcome, user] : {std::tuple{"success", Accepted, "anna"},
                                               {"perm_denied", NoPermission, "before"},
                                               {"new_authtok_reqd", PasswordExpired, "anna"},
                                               {"acct_expired", Failed, "before"}}) {
    UseStack("auth required " + Matrix() + "account required " +
             Debug(std::string("acct=") + account));
    Kiva::session() = {};
    Kiva::session().user = "before";
    EXPECT_EQ(Kiva::authenticate("anna", Secret("secret")), outcome) << account;
    EXPECT_EQ(Kiva::session().user, user) << account;
    EXPECT_EQ(Kiva::session().bySmartCard, Kiva::session().user == "anna") << account;
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

TEST_F(SmartCardTest, StaysInAnySlotDuringASession) {
  Kiva::session() = {.active = true, .user = "anna", .bySmartCard = true, .smartCardUserId = {}};
  driver->slots = {{"1", {{"x", "bert"}}}, {"2", {{"y", "anna"}}}};
  Kiva::checkSmartCard();
  EXPECT_EQ(platform->Lines(), Lines{});
}

}  // namespace
