// SPDX-License-Identifier: MIT
#include "ui/markup_paint.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace Kiva {

void PrintTo(const Run& run, std::ostream* out) {
  *out << run.row << ',' << run.column << " \"" << run.text << "\" " << run.background << '/'
       << run.foreground;
}

namespace {

struct Case {
  const char* name;
  std::string laidOut;
  std::vector<Run> runs;
};

constexpr PaintArea kArea{.width = 8, .height = 3, .background = kAmber, .foreground = kWhite};

void expectPainted(const PaintArea& area, const std::vector<Case>& cases) {
  for (const auto& [name, laidOut, runs] : cases) {
    EXPECT_EQ(paintMarkup(laidOut, area), runs) << name << ": " << laidOut;
  }
}

Run own(int row, int column, const char* text) {
  return {row, column, text, kAmber, kWhite};
}

Run onAmber(int column, const char* text, Color foreground) {
  return {0, column, text, kAmber, foreground};
}

Run dim(int column, const char* text) {
  return {0, column, text, kBlack, kDarkGrey};
}

TEST(MarkupPaint, PlacesText) {
  const std::string tooLong = "abcdefghij";
  expectPainted(
      kArea,
      {
          {"nothing", "", {}},
          {"lines", "ab\n\ncd", {own(0, 0, "ab"), own(2, 0, "cd")}},
          {"below the last row", "a\nb\nc\nd", {own(0, 0, "a"), own(1, 0, "b"), own(2, 0, "c")}},
          {"the last run is cut", tooLong, {own(0, 0, "abcdefgh")}},
          {"the last run is cut after a tag",
           "abcde{color:white}fghij",
           {own(0, 0, "abcde"), own(0, 5, "fgh")}},
          {"other runs are not", tooLong + "\nk", {own(0, 0, "abcdefghij"), own(1, 0, "k")}},
          {"beyond the edge",
           tooLong + "{color:white}kl\nm",
           {own(0, 0, "abcdefghij"), own(1, 0, "m")}},
          {"unclosed tag", "ab{color:white", {own(0, 0, "ab")}},
          {"break in a tag", "a{x\ny}b", {own(0, 0, "ab")}},
          {"columns are characters",
           "\u00e4\u20ac{color:white}\u00e4\u20ac\u00e4\u20ac\u00e4\u20ac\u00e4\u20ac",
           {own(0, 0, "\u00e4\u20ac"), own(0, 2, "\u00e4\u20ac\u00e4\u20ac\u00e4\u20ac")}},
          {"control characters",
           std::string("a\tb\x01\x7f\x1b\xc2\x9b", 8) + '\0' + "c",
           {own(0, 0, "a b     ")}},
          {"broken bytes", "a\xc3{color:white}\xa9", {own(0, 0, "a?")}},
      });
  for (const PaintArea& area : {PaintArea{0, 3}, PaintArea{8, 0}, PaintArea{-1, -1}}) {
    expectPainted(area, {{"no cell", "ab\ncd", {}}});
  }
}

TEST(MarkupPaint, Colors) {
  expectPainted(
      kArea,
      {
          {"every name",
           "{color:white}a{color:black}b{color:dark-grey}c{color:light-grey}d{color:yellow}e"
           "{color:red}f",
           {onAmber(0, "a", 7), onAmber(1, "b", 0), onAmber(2, "c", 6), onAmber(3, "d", 2),
            onAmber(4, "e", 3), onAmber(5, "f", 1)}},
          {"closed",
           "a{color:red}b{/color}c",
           {own(0, 0, "a"), onAmber(1, "b", kRed), own(0, 2, "c")}},
          {"over a line break",
           "{color:red}a\nb",
           {onAmber(0, "a", kRed), {1, 0, "b", kAmber, kRed}}},
          {"closing one kind ends both",
           "{bgcolor:white}{color:black}X{/color}Y{/bgcolor}Z",
           {{0, 0, "X", kWhite, kBlack}, own(0, 1, "Y"), own(0, 2, "Z")}},
          {"closed colours combine with later ones",
           "{color:red}a{/color}{bgcolor:black}b{/bgcolor}{color:yellow}c",
           {onAmber(0, "a", kRed), {0, 1, "b", kBlack, kRed}, {0, 2, "c", kBlack, kAmber}}},
          {"unknown name opens all the same",
           "{bgcolor:white}{color:Red}a{/color}b",
           {{0, 0, "a", kWhite, kWhite}, own(0, 1, "b")}},
          {"no name", "a{color}b{/color}c", {own(0, 0, "a"), own(0, 1, "b"), own(0, 2, "c")}},
          {"never opened", "a{/color}b{/bgcolor}c{nope}d", {own(0, 0, "abcd")}},
          {"the other kind's closing", "{bgcolor:white}a{/color}b", {{0, 0, "ab", kWhite, kWhite}}},
      });
}

TEST(MarkupPaint, InactiveAreasSplitButDoNotColor) {
  PaintArea area = kArea;
  area.active = false;
  expectPainted(area, {{"inactive",
                        "a{color:red}b{bgcolor:white}c{/color}d",
                        {dim(0, "a"), dim(1, "b"), dim(2, "c"), dim(3, "d")}}});
}

}  // namespace
}  // namespace Kiva
