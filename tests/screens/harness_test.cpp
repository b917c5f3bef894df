// SPDX-License-Identifier: MIT
// The traps of the harness itself: what would make every other test of a screen lie.
#include <gtest/gtest.h>

#include "harness/terminal.h"

using namespace Harness;

namespace {

TEST(OutputFilter, TakesPaletteCommandsOutWhereverTheStreamIsSplit) {
  const std::string output =
      "a\033]P3ffcc00b\033]4;6;rgb:55/55/55\033\\c\033[1m\033\033]4;1;rgb:FF/00/"
      "00\ad\033]Re\033]104\a";
  const std::vector<PaletteChange> changes = {{3, 0xffcc00}, {6, 0x555555}, {1, 0xff0000}, {}, {}};
  for (std::size_t split = 0; split <= output.size(); ++split) {
    OutputFilter filter;
    const std::string passed = filter.Pass(output.substr(0, split));
    EXPECT_EQ(passed + filter.Pass(output.substr(split)), "abc\033[1m\033de") << split;
    EXPECT_EQ(filter.Changes(), changes) << split;
    EXPECT_EQ(filter.Redefined(3), std::nullopt) << split;
  }
}

TEST(Terminal, WaitsForTheAnswerToWhatIsTypedAndFindsNothingElse) {
  const char* answers = "while read x && [ $x != end ]; do sleep 0.05; echo \"<$x>\"; done; exit 3";
  Terminal terminal({.arguments = {"/bin/sh", "-c", answers}});
  for (int i = 0; i < 20; ++i) {
    const std::string text = std::to_string(i);
    terminal.Type(text + "\n");
    ASSERT_TRUE(terminal.Look().Shows("<" + text + ">")) << terminal.Look().Dump();
  }
  terminal.SetDeadline(Console::Milliseconds{200});
  EXPECT_THROW(terminal.WaitFor("good-bye"), WaitFailed) << "found what is not there";
  terminal.SetDeadline(Console::Milliseconds{30000});
  terminal.BytesSince();
  terminal.Type("end\n");
  EXPECT_EQ(terminal.WaitForExit(), 3);
  EXPECT_EQ(terminal.BytesSince(), 5U) << "its own markers must not count, only the echo";
}

}  // namespace
