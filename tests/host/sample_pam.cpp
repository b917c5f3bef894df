// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <security/pam_appl.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "harness/demo_host.h"
#include "hostctl/lib/platform.h"
#include "sample/sample_host.h"

namespace {

using Harness::DemoHost;

/// Answers hidden prompts in order and counts all messages; without an answer left it gives none.
struct Conversation {
  std::vector<std::string> answers;
  std::size_t asked = 0;
  int otherMessages = 0;
};

int converse(int count, const pam_message** messages, pam_response** responses, void* data) {
  auto& self = *static_cast<Conversation*>(data);
  auto* given = static_cast<pam_response*>(
      std::calloc(static_cast<std::size_t>(count), sizeof(pam_response)));
  for (int i = 0; i < count; ++i) {
    if (messages[i]->msg_style != PAM_PROMPT_ECHO_OFF)
      ++self.otherMessages;
    else if (self.asked++ < self.answers.size())
      given[i].resp = strdup(self.answers[self.asked - 1].c_str());
  }
  *responses = given;
  return PAM_SUCCESS;
}

class SamplePam : public testing::Test {
 protected:
  /// The host lies under a name that PAM's own syntax would take apart.
  SamplePam() {
    const auto awkward = host.Directory() / "a [b] c";
    std::filesystem::create_directory_symlink(".", awkward);
    HostSample::useSampleHost(awkward);
  }

  /// Runs `steps` on one transaction until one fails, and returns the last status.
  int Transact(const char* user, const std::vector<std::string>& answers,
               const std::vector<int (*)(pam_handle_t*, int)>& steps) {
    conversation = {answers};
    const pam_conv conv = {converse, &conversation};
    const std::string directory = HostCtl::Lib::platform().PamServiceDirectory().value();
    pam_handle_t* handle = nullptr;
    int status = pam_start_confdir("kiva", user, &conv, directory.c_str(), &handle);
    for (const auto step : steps)
      if (status == PAM_SUCCESS || status == PAM_NEW_AUTHTOK_REQD)
        status = step(handle, PAM_SILENT);
    EXPECT_EQ(pam_end(handle, status), PAM_SUCCESS);
    return status;
  }
  int LogIn(const char* user, const char* secret) {
    return Transact(user, {secret}, {pam_authenticate, pam_acct_mgmt});
  }
  int ChangePassword(const char* user, const std::vector<std::string>& answers) {
    return Transact(user, answers,
                    {pam_authenticate, pam_acct_mgmt, pam_chauthtok, [](pam_handle_t* handle, int) {
                       return pam_setcred(handle, PAM_REFRESH_CRED);
                     }});
  }

  DemoHost host;
  Conversation conversation;
};

TEST_F(SamplePam, ShowsEveryOutcomeOfALogin) {
  EXPECT_EQ(LogIn("carla", "4711"), PAM_AUTH_ERR) << "no card, no PIN";
  host.Set("/smartCardSlots/0/token", {{"label", "card"}, {"userId", "carla"}});
  const struct {
    const char *user, *secret;
    int status;
  } cases[] = {{"root", "demo", PAM_SUCCESS},       {"root", "Demo", PAM_AUTH_ERR},
               {"root", "", PAM_AUTH_ERR},          {"nobody", "demo", PAM_AUTH_ERR},
               {"operator", "wrong", PAM_AUTH_ERR}, {"operator", "operator", PAM_PERM_DENIED},
               {"guest", "", PAM_SUCCESS},          {"expired", "expired", PAM_NEW_AUTHTOK_REQD},
               {"carla", "4711", PAM_SUCCESS},      {"root", "4711", PAM_AUTH_ERR}};
  for (const auto& one : cases) {
    EXPECT_EQ(LogIn(one.user, one.secret), one.status) << one.user << " " << one.secret;
    EXPECT_EQ(conversation.asked, 1u);
    EXPECT_EQ(conversation.otherMessages, 0);
  }
  EXPECT_EQ(Transact("guest", {}, {pam_authenticate}), PAM_CONV_ERR) << "no answer is no password";
}

TEST_F(SamplePam, ChangesAPasswordWithTwoMoreQuestions) {
  const std::string before = host.Text();
  EXPECT_EQ(ChangePassword("root", {"demo", "long-enough", "long-enouhg"}), PAM_AUTHTOK_ERR);
  EXPECT_EQ(ChangePassword("root", {"demo", "short", "short"}), PAM_AUTHTOK_ERR);
  EXPECT_EQ(ChangePassword("root", {"wrong", "long-enough", "long-enough"}), PAM_AUTH_ERR);
  EXPECT_EQ(Transact("root", {"long-enough", "long-enough"}, {pam_chauthtok}),
            PAM_AUTHTOK_RECOVERY_ERR);
  EXPECT_EQ(host.Text(), before);
  host.Set("/minimumPasswordLength", 5);
  ASSERT_EQ(ChangePassword("expired", {"expired", "short", "short"}), PAM_SUCCESS);
  EXPECT_EQ(conversation.asked, 3u);
  EXPECT_EQ(LogIn("expired", "short"), PAM_SUCCESS);
  EXPECT_EQ(LogIn("expired", "expired"), PAM_AUTH_ERR);
  host.WriteText("{");
  EXPECT_EQ(LogIn("root", "demo"), PAM_SYSTEM_ERR) << "a host that cannot be read";
}

}  // namespace
