// SPDX-License-Identifier: MIT
#include "ui/markup_paint.h"

#include <gtest/gtest.h>

namespace Kiva {
namespace {

/// Every run as "ROW,COLUMN TEXT|", where its colours are not the area's own with them as
/// "ROW,COLUMN BACKGROUND/FOREGROUND TEXT|".
std::string painted(const std::string& laidOut, const PaintArea& area) {
  std::string all;
  for (const Run& run : paintMarkup(laidOut, area)) {
    all += std::to_string(run.row) + "," + std::to_string(run.column) + " ";
    if (run.background != area.background || run.foreground != area.foreground)
      all += std::to_string(run.background) + "/" + std::to_string(run.foreground) + " ";
    all += run.text + "|";
  }
  return all;
}

TEST(MarkupPaint, PlacesAndColoursText) {
  const PaintArea kArea{.width = 8, .height = 3, .background = kAmber, .foreground = kWhite};
  const struct {
    const char* name;
    std::string laidOut;
    const char* runs;
  } cases[] = {
      {"nothing", "", ""},
      {"lines", "ab\n\ncd", "0,0 ab|2,0 cd|"},
      {"below the last row", "a\nb\nc\nd", "0,0 a|1,0 b|2,0 c|"},
      {"the last run is cut", "abcdefghij", "0,0 abcdefgh|"},
      {"so is one after a tag", "abcde{color:white}fghij", "0,0 abcde|0,5 fgh|"},
      {"other runs are not", "abcdefghij\nk", "0,0 abcdefghij|1,0 k|"},
      {"beyond the edge", "abcdefghij{color:white}kl\nm", "0,0 abcdefghij|1,0 m|"},
      {"unclosed tag", "ab{color:white", "0,0 ab|"},
      {"break in a tag", "a{x\ny}b", "0,0 ab|"},
      {"columns are characters", "ä€{color:white}ä€ä€ä€ä€", "0,0 ä€|0,2 ä€ä€ä€|"},
      {"controls", std::string("a\tb\x01\x7f\x1b\xc2\x9b", 8) + '\0' + "c", "0,0 a b     |"},
      {"broken bytes", "a\xc3{color:white}\xa9", "0,0 a?|"},
      {"every colour",
       "{color:white}a{color:black}b{color:dark-grey}c{color:light-grey}d{color:yellow}e"
       "{color:red}f",
       "0,0 a|0,1 3/0 b|0,2 3/6 c|0,3 3/2 d|0,4 3/3 e|0,5 3/1 f|"},
      {"closed", "a{color:red}b{/color}c", "0,0 a|0,1 3/1 b|0,2 c|"},
      {"over a line break", "{color:red}a\nb", "0,0 3/1 a|1,0 3/1 b|"},
      {"closing one kind ends both", "{bgcolor:white}{color:black}X{/color}Y{/bgcolor}Z",
       "0,0 7/0 X|0,1 Y|0,2 Z|"},
      {"closed colours combine with later ones",
       "{color:red}a{/color}{bgcolor:black}b{/bgcolor}{color:yellow}c",
       "0,0 3/1 a|0,1 0/1 b|0,2 0/3 c|"},
      {"unknown name opens all the same", "{bgcolor:white}{color:Red}a{/color}b",
       "0,0 7/7 a|0,1 b|"},
      {"no name", "a{color}b{/color}c", "0,0 a|0,1 b|0,2 c|"},
      {"never opened", "a{/color}b{/bgcolor}c{nope}d", "0,0 abcd|"},
      {"the other kind's closing", "{bgcolor:white}a{/color}b", "0,0 7/7 ab|"},
  };
  for (const auto& [name, laidOut, runs] : cases)
    EXPECT_EQ(painted(laidOut, kArea), runs) << name << ": " << laidOut;
  for (const PaintArea& area : {PaintArea{0, 3}, PaintArea{8, 0}, PaintArea{-1, -1}})
    EXPECT_EQ(painted("ab\ncd", area), "");
  const PaintArea inactive{8, 3, kAmber, kWhite, false};
  EXPECT_EQ(painted("a{color:red}b{bgcolor:white}c{/color}d", inactive),
            "0,0 0/6 a|0,1 0/6 b|0,2 0/6 c|0,3 0/6 d|");
}

}  // namespace
}  // namespace Kiva
