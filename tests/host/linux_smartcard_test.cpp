// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "linux/smart_cards.h"

using namespace HostLinux;

namespace {

// A software token in a folder of its own, through the machine's p11-kit configuration.
TEST(LinuxSmartCard, ComesWithItsHolderAndGoes) {
  if (!installed("softhsm2-util pkcs11-tool openssl") ||
      !std::filesystem::exists("/usr/share/p11-kit/modules/softhsm2.module"))
    GTEST_SKIP() << "softhsm2 (known to p11-kit), opensc or openssl is not installed";
  const Harness::TemporaryFolder folder;
  const std::string root = folder.Path();
  folder.Write("tokens/none", "");
  folder.Write("conf", "directories.tokendir = " + root + "/tokens\nlog.level = ERROR\n");
  setenv("SOFTHSM2_CONF", (root + "/conf").c_str(), 1);
  SmartCards cards;
  const auto holder = [&]() -> std::string {
    for (const auto& slot : cards.Read())
      if (slot.token && slot.token->label == "Kiva card") return slot.token->userId;
    return "no card";
  };
  EXPECT_EQ(holder(), "no card");
  EXPECT_TRUE(
      shell("softhsm2-util --init-token --free --label 'Kiva card' --pin 1234 "
            "--so-pin 123456 >/dev/null"));
  EXPECT_EQ(holder(), "Kiva card");
  EXPECT_TRUE(shell("cd " + root + R"(
    openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 \
      -keyout key.pem -outform DER -out card.der -subj /O=Corvo/CN=alice 2>/dev/null
    pkcs11-tool --module $(find /usr/lib -name libsofthsm2.so | head -n 1) --login --pin 1234 \
      --token-label 'Kiva card' --write-object card.der --type cert --id 01 >/dev/null 2>&1)"));
  EXPECT_EQ(holder(), "alice");
  EXPECT_TRUE(shell("softhsm2-util --delete-token --token 'Kiva card' >/dev/null"));
  EXPECT_EQ(holder(), "no card");
  unsetenv("SOFTHSM2_CONF");
}

}  // namespace
