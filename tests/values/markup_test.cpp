// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "ui/markup_layout.h"
#include "ui/markup_paint.h"

using namespace Kiva;

namespace {

/// Why, the markup, the width, and what comes of it.
using Case = std::tuple<const char*, std::string, int, std::string>;

KeywordTable keywords() {
  KeywordTable table;
  table.Register("hostname", [] { return "kiva7"; });
  table.Register("phrase", [] { return "ab cd ef"; });
  table.Register("sly", [] { return "a{color:red}b"; });
  table.Register("broken", [] { return "\xc3\xa4\xa4"; });
  table.Register("align:k", [] { return "never"; });
  return table;
}

void expectLaidOut(const std::vector<Case>& cases) {
  for (const auto& [name, markup, width, laidOut] : cases) {
    EXPECT_EQ(layOutMarkup(markup, width, keywords()), laidOut) << name << ": " << markup;
  }
}

TEST(MarkupLayout, BreaksLines) {
  expectLaidOut({{"blank right after a full line", "hello world", 5, "hello\nworld"},
                 {"second blank after a full line stays", "hello  world", 6, "hello \nworld"},
                 {"moved word keeps its room", "hello worldly you", 8, "hello\nworldly\nyou"},
                 {"tab is a break position", "ab\tcd", 4, "ab\ncd"},
                 {"long word", "abcdefg", 3, "abc\ndef\ng"},
                 {"blank at the start", " abcdef", 4, "\nabcd\nef"},
                 {"break after a full line is the break", "abc\ndef", 3, "abc\ndef"},
                 {"second break after a full line", "abc\n\ndef", 3, "abc\n\ndef"},
                 {"break before a long word", "a b\ncdefgh", 4, "a b\ncdef\ngh"},
                 {"no column", "ab c", 0, "\na\nb\n\nc"},
                 {"less than none", "ab{align:right}c{/align}", -3, "\na\nb\nc"},
                 {"more than any", "ab c", INT_MAX, "ab c"},
                 {"file's line ends", "ab\r\ncd\r\n", 2, "ab\ncd\n"}});
}

TEST(MarkupLayout, HandsOnTagsThatAreNotItsOwn) {
  expectLaidOut({{"no room taken", "{color:red}ab{/color}cd", 2, "{color:red}ab{/color}\ncd"},
                 {"unknown", "a{nope}{:}b", 2, "a{nope}{:}b"},
                 {"empty", "a{}b", 5, "ab"},
                 {"unclosed", "ab{color:red", 5, "ab"},
                 {"lone closing brace, brace in a tag", "a}{{x}b", 7, "a}{{x}b"},
                 {"break in a tag", "{color:\n}ab", 2, "{color:\n}ab"}});
}

TEST(MarkupLayout, AlignsSpans) {
  expectLaidOut({{"right after text", "aa {align:right}b{/align}c", 6, "aa   b\nc"},
                 {"right, exact fit", "{align:right}abcdef{/align}", 6, "abcdef"},
                 {"centre", "{align:center}ab{/align}x", 7, "  ab\nx"},
                 {"left opens no span", "{align:left}ab{/align}c", 5, "abc"},
                 {"without a value", "{align}ab{/align}c", 5, "abc"},
                 {"keyword of an alignment's name", "{align:k}ab", 5, "ab"},
                 {"inner one is dropped", "{align:right}a{align:center}b{/align}c", 5, "   ab\nc"},
                 {"closed twice", "{align:right}a{/align}{/align}b", 3, "  a\nb"},
                 {"never closed", "{align:right}ab", 5, "ab"},
                 {"pushed out by the part that moves down", "{align:right}hello world{/align}", 10,
                  "     hello\nworld     "},
                 {"wrapped span is torn behind its first character",
                  "{align:right}hello worlds{/align}", 10, "     hello\nworld    s"},
                 {"centred by half of what moves down", "{align:center}hello world{/align}", 10,
                  "  hello\nworld  "},
                 {"blank before the span", "aa {align:right}bbbb{/align}", 5, "aa\n   bbb b"},
                 {"break before the end", "{align:right}abc\n{/align}", 5, "abc\n     "}});
}

TEST(MarkupLayout, FillsFields) {
  expectLaidOut(
      {{"filled", "{align:padding:20}Name{/align}value", 40, "Name                value"},
       {"cut", "{align:padding:3}abcdef{/align}g", 10, "abcg"},
       {"fills no more than the line", "a{align:padding:5}b{/align}c", 4, "ab  \nc"},
       {"no number of columns", "{align:padding:x}ab{/align}c", 5, "c"},
       {"negative", "{align:padding:-2}ab{/align}c", 5, "c"},
       {"leading number", "{align:padding:4x}ab{/align}c", 9, "ab  c"},
       {"vast", "{align:padding:99999999999999999999}ab{/align}c", 5, "ab   \nc"},
       {"cut blank is no break position", "{align:padding:1}a b{/align}cde", 3, "acd\ne"},
       {"cut line break begins a line all the same", "{align:padding:1}a\nb{/align}cdef", 3,
        "acde\nf"},
       {"full field at a full line", "{align:padding:2}abcd{/align}e", 2, "ab\ne"},
       {"moves down with its fill", "x {align:padding:3}a{/align}bcde", 6, "x\na  bcd\ne"}});
}

TEST(MarkupLayout, ExpandsKeywords) {
  expectLaidOut({{"other case", "{Hostname}", 20, "{Hostname}"},
                 {"in a right span", "{align:right}{hostname}{/align}", 8, "   kiva7"},
                 {"broken hard, not at blanks", "x {phrase}", 5, "x ab \ncd ef"},
                 {"moves down with what follows", "x {hostname}yzz", 7, "x\nkiva7yz\nz"},
                 {"cut by a field", "{align:padding:3}{hostname}{/align}!", 9, "kiv!"},
                 {"cut at a full line", "{align:padding:3}{hostname}{/align}", 3, "kiv"},
                 {"its braces are no tags", "{sly}", 20, "a(color:red)b"},
                 {"broken bytes", "{broken}", 20, "\xc3\xa4"}});
}

TEST(MarkupLayout, CountsCharactersNotBytes) {
  expectLaidOut(
      {{"exact fit", "\u00e4\u20ac\U0001f600", 3, "\u00e4\u20ac\U0001f600"},
       {"never split", "\u00e4\u20ac\U0001f600\u00df", 3, "\u00e4\u20ac\U0001f600\n\u00df"},
       {"cut whole", "{align:padding:1}\u00e4\u20ac{/align}x", 5, "\u00e4x"},
       {"span start inside a character", "{align:right}a\n\u00e4{/align}", 3, "a\n\u00e4  "},
       {"broken bytes are one column each", "a\xff\x80\xc3z", 2, "a?\n?z"},
       {"overlong, surrogate, beyond the last", "\xc0\xaf \xed\xa0\x80 \xf4\x90\x80\x80", 20,
        "? ? ?"}});
}

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
  const std::tuple<const char*, std::string, const char*> cases[] = {
      {"lines", "ab\n\ncd", "0,0 ab|2,0 cd|"},
      {"below the last row", "a\nb\nc\nd", "0,0 a|1,0 b|2,0 c|"},
      {"the last run is cut", "abcdefghij", "0,0 abcdefgh|"},
      {"so is one after a tag", "abcde{color:white}fghij", "0,0 abcde|0,5 fgh|"},
      {"other runs are not", "abcdefghij\nk", "0,0 abcdefghij|1,0 k|"},
      {"beyond the edge", "abcdefghij{color:white}kl\nm", "0,0 abcdefghij|1,0 m|"},
      {"unclosed tag", "ab{color:white", "0,0 ab|"},
      {"break in a tag", "a{x\ny}b", "0,0 ab|"},
      {"columns are characters", "ä€{color:white}ä€ä€ä€ä€", "0,0 ä€|0,2 ä€ä€ä€|"},
      {"controls", std::string("a\tb\x01\x7f\x1b\xc2\x9b\0c", 10), "0,0 a b     |"},
      {"broken bytes", "a\xc3{color:white}\xa9", "0,0 a?|"},
      {"every colour",
       "{color:white}a{color:black}b{color:dark-grey}c{color:light-grey}d{color:yellow}e"
       "{color:red}f",
       "0,0 a|0,1 3/0 b|0,2 3/6 c|0,3 3/2 d|0,4 3/3 e|0,5 3/1 f|"},
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
      {"the other kind's closing", "{bgcolor:white}a{/color}b", "0,0 7/7 ab|"}};
  for (const auto& [name, laidOut, runs] : cases)
    EXPECT_EQ(painted(laidOut, kArea), runs) << name << ": " << laidOut;
  for (const PaintArea& area : {PaintArea{0, 3}, PaintArea{8, 0}, PaintArea{-1, -1}})
    EXPECT_EQ(painted("ab\ncd", area), "");
  const PaintArea inactive{8, 3, kAmber, kWhite, false};
  EXPECT_EQ(painted("a{color:red}b{bgcolor:white}c{/color}d", inactive),
            "0,0 0/6 a|0,1 0/6 b|0,2 0/6 c|0,3 0/6 d|");
}

}  // namespace
