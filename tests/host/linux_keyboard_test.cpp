// SPDX-License-Identifier: MIT
// Key maps put in force on the consoles of this machine, which have one map between them. It is put
// back even when the test is killed: a child does so as soon as nobody holds its pipe any more.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "harness/virtual_terminal.h"
#include "hostctl/lib/exception.h"
#include "linux/keyboard_layouts.h"

using namespace HostLinux;
using HostCtl::Lib::Descriptor;

namespace {

std::string keymapInForce() {
  return ended("dumpkeys -f -C /dev/tty0").output;
}

class LinuxKeyboard : public testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    if (!Harness::VirtualTerminal::Available(reason)) GTEST_SKIP() << reason;
    if (!installed("loadkeys dumpkeys gzip setsid")) GTEST_SKIP() << "no loadkeys (package kbd)";
    ASSERT_EQ(flock(alone_.Get(), LOCK_EX), 0);
    before_ = keymapInForce();
    folder_.Write("before", before_);
    const std::string saved = Path("before");
    guard_ = popen(
        ("exec setsid sh -c 'cat; loadkeys -q -s -c -C /dev/tty0 " + saved + "; rm " + saved + "'")
            .c_str(),
        "we");
    ASSERT_TRUE(guard_);
    std::filesystem::create_directories(Path("usr/bin"));
    std::filesystem::create_symlink("/usr/bin/loadkeys", Path("usr/bin/loadkeys"));
  }

  void TearDown() override {
    if (!guard_) return;
    pclose(guard_);
    EXPECT_TRUE(keymapInForce() == before_);
  }

  std::string Path(const std::string& name) const { return (folder_.Path() / name).string(); }
  void WriteKeymap(const std::string& name, const std::string& text) const {
    folder_.Write("usr/share/keymaps/i386/" + name, text);
  }
  /// Why the layout could not be loaded; empty when it was.
  std::string Load(const std::string& layout) const try {
    loadKeyboardMappings(Files(folder_.Path()), layout);
    return "";
  } catch (const HostCtl::Lib::HostCtlException& error) {
    return error.what();
  }

  /// Whether the key right of "t" types `letter`.
  static bool Types(const std::string& letter) {
    return shell("dumpkeys -C /dev/tty0 | grep -Eq '^keycode  21 = [+]?" + letter + "\\b'");
  }

  Harness::TemporaryFolder folder_;
  const Descriptor alone_{open("/dev/tty0", O_RDWR | O_NOCTTY | O_CLOEXEC)};
  std::string before_;
  FILE* guard_ = nullptr;
};

TEST_F(LinuxKeyboard, AKeymapIsInForceOrNothingHasChanged) {
  WriteKeymap("swapped.kmap", "keycode 21 = z\nkeycode 44 = y\n");
  WriteKeymap("packed.kmap", "keycode 21 = q\nkeycode 44 = y\n");
  ASSERT_TRUE(shell("cd " + Path("usr/share/keymaps/i386") +
                    " && gzip packed.kmap && "
                    "head -c 30 packed.kmap.gz > cut.kmap.gz"));
  WriteKeymap("unpacked.kmap.gz", "keycode 21 = z\n");
  WriteKeymap("wrong.kmap", "keycode 21 = z\nkeycode 44 = = y\n");
  const std::pair<const char*, const char*> broken[] = {{"cut", "unexpected end of file"},
                                                        {"unpacked", "not in gzip format"},
                                                        {"wrong", "syntax error"},
                                                        {"none", "there is no such keyboard"}};
  for (const auto& [layout, why] : broken) {
    EXPECT_NE(Load(layout).find(why), std::string::npos) << layout << ": " << Load(layout);
    EXPECT_TRUE(keymapInForce() == before_) << layout;
  }
  const std::pair<const char*, const char*> good[] = {{"swapped", "z"}, {"packed", "q"}};
  for (const auto& [layout, key] : good) {
    EXPECT_EQ(Load(layout), "");
    EXPECT_TRUE(
        shell("dumpkeys -C /dev/tty0 | grep -q '^keycode  21 = +*" + std::string(key) + "'"))
        << layout;
  }
  std::filesystem::remove(Path("usr/bin/loadkeys"));
  EXPECT_NE(Load("swapped").find("No such file or directory"), std::string::npos)
      << Load("swapped");
}

TEST_F(LinuxKeyboard, AKeymapOfThisMachine) {
  const auto layouts = readKeyboardLayouts(Files());
  if (std::find(layouts.begin(), layouts.end(), "de") == layouts.end())
    GTEST_SKIP() << "no keymap \"de\" (package console-data)";
  loadKeyboardMappings(Files(), "de");
  EXPECT_TRUE(Types("z"));
}

TEST_F(LinuxKeyboard, TheTerminalOfTheConsoleComesFirst) {
  const Harness::FreeVirtualTerminal terminal;
  EXPECT_EQ(findConsoleDevice(terminal.Device()), terminal.Path());
  EXPECT_EQ(findConsoleDevice(fileno(guard_)), "/dev/tty0");
}

}  // namespace
