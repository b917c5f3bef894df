// SPDX-License-Identifier: MIT
#include "ui/markup_text.h"

#include <gtest/gtest.h>

#include <tuple>

namespace Kiva {
namespace {

TEST(MarkupText, CountsLines) {
  const std::tuple<const char*, int, int> cases[] = {
      {"", 5, 0},         {"abc", 5, 1},     {"abc\n", 5, 1},
      {"abc\n\nd", 5, 3}, {"abc def", 5, 2}, {"{color:red}abcde{/color}", 5, 1},
      {"a{x\ny}b", 5, 1},
  };
  for (const auto& [markup, width, lines] : cases) {
    EXPECT_EQ(countLines(markup, width), lines) << markup;
  }
}

TEST(MarkupText, SqueezesBlanks) {
  EXPECT_EQ(squeezeBlanks("  Model\t\tX(R)  CPU \n 2.0 "), "Model X(R) CPU 2.0");
  EXPECT_EQ(squeezeBlanks(" \t "), "");
  EXPECT_EQ(squeezeBlanks("one"), "one");
}

TEST(MarkupText, ShowsBracesAsParentheses) {
  EXPECT_EQ(plainText("{color:red}x}"), "(color:red)x)");
}

}  // namespace
}  // namespace Kiva
