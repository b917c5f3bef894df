// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "linux/smart_cards.h"

using namespace HostLinux;

namespace {

using HostCtl::Authentication::SmartCardToken;

// A software token in a folder of its own, through the machine's p11-kit configuration.
class LinuxSmartCard : public testing::Test {
 protected:
  void SetUp() override {
    if (!installed("softhsm2-util pkcs11-tool openssl") ||
        !std::filesystem::exists("/usr/share/p11-kit/modules/softhsm2.module"))
      GTEST_SKIP() << "softhsm2 (known to p11-kit), opensc or openssl is not installed";
    folder_.Write("tokens/none", "");
    folder_.Write("conf", "directories.tokendir = " + folder_.Path().string() +
                              "/tokens\nlog.level = ERROR\n");
    setenv("SOFTHSM2_CONF", (folder_.Path() / "conf").c_str(), 1);
  }
  void TearDown() override { unsetenv("SOFTHSM2_CONF"); }
  bool AddCertificate(const std::string& subject) {
    return shell("cd " + folder_.Path().string() +
                 "\nopenssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 "
                 "-keyout key.pem -outform DER -out card.der -subj '" +
                 subject +
                 "' 2>/dev/null\n"
                 "module=$(find /usr/lib -name libsofthsm2.so | head -n 1)\n"
                 "pkcs11-tool --module $module --token-label 'Kiva card' --login --pin 1234 "
                 "--write-object card.der --type cert --id 01 >/dev/null 2>&1");
  }
  std::optional<SmartCardToken> Card() {
    for (auto& slot : cards_.Read())
      if (slot.token && slot.token->label == "Kiva card") return slot.token;
    return std::nullopt;
  }

  Harness::TemporaryFolder folder_;
  SmartCards cards_;
};

TEST_F(LinuxSmartCard, ComesWithItsHolderAndGoes) {
  EXPECT_FALSE(Card());
  ASSERT_TRUE(
      shell("softhsm2-util --init-token --free --label 'Kiva card' --pin 1234 "
            "--so-pin 123456 >/dev/null"));
  ASSERT_TRUE(Card());
  EXPECT_EQ(Card()->userId, "Kiva card");
  ASSERT_TRUE(AddCertificate("/O=Corvo/CN=alice"));
  ASSERT_TRUE(Card());
  EXPECT_EQ(Card()->userId, "alice");
  ASSERT_TRUE(shell("softhsm2-util --delete-token --token 'Kiva card' >/dev/null"));
  EXPECT_FALSE(Card());
}

}  // namespace
