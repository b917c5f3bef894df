// SPDX-License-Identifier: MIT
// What an operator has at the machine itself: its keyboard, and a card.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "harness/virtual_terminal.h"
#include "linux/keyboard_layouts.h"
#include "linux/smart_cards.h"

using namespace HostLinux;

namespace {

std::string keymapInForce() {
  return ended("dumpkeys -f -C /dev/tty0").output;
}

/// Loads a layout of the tree below `root`: why that failed, or what the key right of "t" types
/// now.
std::string load(const std::string& root, const std::string& layout) {
  const std::string why = failureOf([&] { loadKeyboardMappings(Files(root), layout); }),
                    types = "dumpkeys -C /dev/tty0 | sed -n 's/^keycode  21 = +*\\(.*\\) *$/\\1/p'";
  return why.empty() ? ended(types).output.substr(0, 1) : why;
}

// The consoles of the machine have one key map between them. It is put back even when the test is
// killed: by a child that waits until nobody holds its pipe any more.
TEST(LinuxKeyboard, AKeymapIsInForceOrNothingHasChanged) {
  std::string reason;
  if (!Harness::VirtualTerminal::Available(reason)) GTEST_SKIP() << reason;
  if (!installed("loadkeys dumpkeys gzip setsid")) GTEST_SKIP() << "no loadkeys (package kbd)";
  const Harness::FreeVirtualTerminal terminal;
  EXPECT_EQ(findConsoleDevice(terminal.Device()), terminal.Path());
  const HostCtl::Lib::Descriptor alone(open("/dev/tty0", O_RDWR | O_NOCTTY | O_CLOEXEC));
  ASSERT_EQ(flock(alone.Get(), LOCK_EX), 0);
  const Harness::TemporaryFolder folder;
  const std::string root = folder.Path(), before = keymapInForce();
  folder.Write("before", before);
  FILE* guard =
      popen(("setsid sh -c 'cat; loadkeys -qsc -C /dev/tty0 " + root + "/before'").c_str(), "we");
  ASSERT_TRUE(guard);
  EXPECT_EQ(findConsoleDevice(fileno(guard)), "/dev/tty0");

  const std::string maps = "usr/share/keymaps/";
  folder.Write(maps + "swapped.kmap", "keycode 21 = z\nkeycode 44 = y\n");
  folder.Write(maps + "unpacked.kmap.gz", "keycode 21 = z\n");
  folder.Write(maps + "wrong.kmap", "keycode 21 = z\nkeycode 44 = = y\n");
  EXPECT_NE(load(root, "swapped").find("No such file or directory"), std::string::npos);
  ASSERT_TRUE(
      shell("mkdir -p " + root + "/usr/bin && ln -s /usr/bin/loadkeys " + root + "/usr/bin"));
  const std::pair<const char*, const char*> broken[] = {
      {"unpacked", "not in gzip format"}, {"wrong", "syntax error"}, {"none", "there is no such"}};
  for (const auto& [layout, why] : broken)
    EXPECT_NE(load(root, layout).find(why), std::string::npos) << load(root, layout);
  EXPECT_TRUE(keymapInForce() == before);
  EXPECT_EQ(load(root, "swapped"), "z");
  pclose(guard);
  EXPECT_TRUE(keymapInForce() == before);
}

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
