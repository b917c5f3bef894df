// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <cstdio>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "harness/virtual_terminal.h"
#include "linux/keyboard_layouts.h"

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

}  // namespace
