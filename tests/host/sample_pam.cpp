// SPDX-License-Identifier: MIT
// The sample host's accounts, through its PAM module and the console's own transactions.
#include <gtest/gtest.h>
#include <security/pam_appl.h>

#include "harness/demo_host.h"
#include "sample/sample_host.h"
#include "system/pam_change_password.h"
#include "system/pam_login.h"

namespace {

class SamplePam : public testing::Test {
 protected:
  /// The host lies under a name that PAM's own syntax would take apart.
  SamplePam() {
    const auto awkward = host.Directory() / "a [b] c";
    std::filesystem::create_directory_symlink(".", awkward);
    HostSample::useSampleHost(awkward);
  }
  static int LogIn(const char* user, const char* secret) {
    return Kiva::PamLogin(user, Kiva::Secret(secret));
  }
  static bool Change(const char* user, const char* from, const char* to) {
    return Kiva::PamChangePassword(user, Kiva::Secret(from), Kiva::Secret(to));
  }

  Harness::DemoHost host;
};

TEST_F(SamplePam, ChangesAPasswordOnlyForWhoKnowsTheOldOne) {
  const std::string before = host.Text();
  EXPECT_FALSE(Change("root", "demo", "short"));
  EXPECT_FALSE(Change("root", "wrong", "long-enough"));
  EXPECT_EQ(host.Text(), before);
  host.Set("/minimumPasswordLength", 5);
  EXPECT_TRUE(Change("expired", "expired", "short"));
  EXPECT_EQ(LogIn("expired", "short"), PAM_SUCCESS);
  EXPECT_EQ(LogIn("expired", "expired"), PAM_AUTH_ERR);
  host.WriteText("{");
  EXPECT_EQ(LogIn("root", "demo"), PAM_SYSTEM_ERR) << "a host that cannot be read";
}

}  // namespace
