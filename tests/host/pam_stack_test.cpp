// SPDX-License-Identifier: MIT
// The service of console logins as the package brings it, over stand-ins for the card and for the
// machine's own accounts. Both learn the answer as real modules do.
#include <security/pam_appl.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "harness/hosts/recording_platform.h"
#include "system/pam_login.h"

namespace {

constexpr const char* kShipped = KIVA_SOURCE_DIR "/packaging/etc/pam.d/kiva";
constexpr const char* kModules = KIVA_BINARY_DIR "/../lib/kiva";

constexpr int kWrong = PAM_SYSTEM_ERR;  // what pam_exec makes of a program that refuses

class PamStackTest : public TestSupport::OnRecordingHost {
 protected:
  void SetUp() override {
    platform->pamDirectory = folder_.Path().string();
    folder_.Write("passwords", "secret\n12345678\n4711471147114\n");
    folder_.Write("card", "#!/bin/sh\ntouch '" + Path("asked") + "'\nexec grep -qzx 4711\n");
    std::filesystem::permissions(Path("card"), std::filesystem::perms::owner_all);
  }

  std::string Path(const char* name) const { return (folder_.Path() / name).string(); }

  void UseShipped(const std::string& card) const {
    const std::string asks = "pam_exec.so quiet expose_authtok ";
    std::ifstream file(kShipped);
    std::string text(std::istreambuf_iterator<char>(file), {});
    for (const auto& [ours, here] :
         {std::pair<std::string, std::string>{"/usr/lib/kiva", kModules},
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
    folder_.Write("kiva", text);
  }

  Harness::TemporaryFolder folder_;
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
    EXPECT_EQ(Kiva::PamLogin(user, Kiva::Secret(secret)), status) << user << " " << secret;
    EXPECT_EQ(std::filesystem::exists(Path("asked")), asked) << user << " " << secret;
  }
}

}  // namespace
