// SPDX-License-Identifier: MIT
#include "harness/virtual_terminal.h"

#include <gtest/gtest.h>

namespace Harness {
namespace {

TEST(VirtualTerminal, ShowsWhatAProgramWritesAndTakesKeys) {
  std::string reason;
  if (!VirtualTerminal::Available(reason)) GTEST_SKIP() << reason;
  const std::string script = R"(printf '\033[H\033[2J\033[31;43m\342\224\214red\033[0m'; read x; )"
                             R"(printf '\nline <%s> ' "$x"; tty; read x; exit 4)";
  VirtualTerminal terminal({.arguments = {"/bin/sh", "-c", script}, .term = "linux"});
  const Screen screen = terminal.WaitFor("┌red");
  EXPECT_EQ(screen.GetSize(), (Size{25, 80}));
  EXPECT_EQ(screen.ColoursAt(0, 1), (Colours{1, 3}));
  EXPECT_EQ(screen.cursor, (Position{0, 4}));
  terminal.Type("typed\n");
  EXPECT_TRUE(terminal.Look().Shows("line <typed> " + terminal.Path())) << terminal.Look().Dump();
  terminal.Type("\n");
  EXPECT_EQ(terminal.WaitForExit(), 4);
}

}  // namespace
}  // namespace Harness
