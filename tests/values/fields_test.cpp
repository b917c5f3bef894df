// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "core/keys.h"
#include "ui/carousel_item.h"
#include "ui/input_editor.h"
#include "ui/message_dialog.h"

using namespace Kiva;

namespace {

/// What an operator sees of an unfocused field of five columns: its text, and where in it the
/// cursor stands. The area is 16 columns wide, so the field begins at column 9.
std::string seen(InputEditor& editor) {
  std::string field = editor.Line(16, false).substr(9, 5);
  const int cursor = editor.CursorColumn(16) - 9;
  return field.insert(static_cast<std::size_t>(cursor), "|");
}

/// Keys are letters for typed text, and these signs for the others.
int keyOf(char sign) {
  constexpr std::string_view kSigns = "^$<>#~_@";
  constexpr int kKeys[] = {Key::kHome,   Key::kEnd,       Key::kLeft,          Key::kRight,
                           Key::kDelete, Key::kBackspace, Key::kBackspaceByte, Key::kTab};
  const auto at = kSigns.find(sign);
  return at == std::string_view::npos ? sign : kKeys[at];
}

TEST(InputEditor, Edits) {
  const std::array<const char*, 5> cases[] = {
      {"typing replaces a preset value once", "root", "xy", "xy", "xy|   "},
      {"any other key clears it", "root", "@", "", "|     "},
      {"Delete clears it", "root", "#", "", "|     "},
      {"Backspace clears it", "root", "~", "", "|     "},
      {"Home keeps it", "root", "^x", "xroot", "x|root"},
      {"End keeps it", "root", "$x", "rootx", "rootx|"},
      {"Left keeps it", "root", "<x", "rooxt", "roox|t"},
      {"Right keeps it", "root", ">x", "rootx", "rootx|"},
      {"Tab without a selection", "root", "$@", "root", "root| "},
      {"Delete", "root", "^#>#", "ot", "o|t   "},
      {"Delete at the end", "root", "$#", "root", "root| "},
      {"Backspace", "root", "$~<_", "ro", "r|o   "},
      {"Backspace at the start", "root", "^~", "root", "|root "},
      {"Left at the start", "ab", "^<x", "xab", "x|ab  "},
      {"cursor may stand behind a full field", "", "abcde", "abcde", "abcde|"},
      {"scrolls by the end", "", "abcdefg", "abcdefg", "cdefg|"},
      {"scrolls back by the start", "", "abcdefg<<<<<<", "abcdefg", "|bcdef"},
      {"stays scrolled while it fills the field", "", "abcdef<<#", "abcdf", "bcd|f "},
      {"Delete until it fits", "", "abcdef<<##", "abcd", "abcd| "}};
  for (const auto& [name, preset, keys, value, shown] : cases) {
    InputEditor editor("Name:", 5, Masking::kNone);
    if (*preset != '\0') editor.SetValue(preset);
    for (const char* key = keys; *key != '\0'; ++key) {
      seen(editor);
      editor.Key(keyOf(*key));
    }
    EXPECT_EQ(seen(editor), shown) << name;
    EXPECT_EQ(editor.Value(), value) << name;
  }
}

TEST(InputEditor, BackspaceOutOfSightJumpsToTheEnd) {
  InputEditor editor("", 3, Masking::kNone);
  editor.SetValue("abcdefgh", Selection::kNone);
  editor.Line(20, true);
  for (int i = 0; i < 3; ++i) editor.Key(Key::kLeft);
  editor.Key(Key::kBackspace);
  EXPECT_EQ(editor.Value(), "abcdfgh");
  EXPECT_EQ(editor.Line(20, false), std::string(12, ' ') + " [ fgh ]");
  EXPECT_EQ(editor.CursorColumn(20), 18);
}

TEST(InputEditor, DrawsItsLine) {
  InputEditor editor("IP:", -1, Masking::kNone);
  editor.SetValue("1.2");
  EXPECT_EQ(editor.Line(20, false), "IP:    [ 1.2       ]");
  EXPECT_EQ(editor.Line(20, true),
            "IP:    [ {bgcolor:white}{color:black}1.2{/color}{/bgcolor}       ]");
  EXPECT_EQ(editor.CursorColumn(20), 12);
  editor.Key(Key::kEnd);
  EXPECT_EQ(editor.Line(20, true),
            "IP:    [ {bgcolor:black}{color:white}1.2{/color}{/bgcolor}       ]");
}

TEST(InputEditor, GivesWayInNarrowAreas) {
  InputEditor editor("A long label:", 10, Masking::kNone);
  editor.SetValue("0123456789");
  EXPECT_EQ(editor.Line(20, false), "A lon [ 0123456789 ]");
  EXPECT_EQ(editor.Line(7, false), " [ 89 ]");
  EXPECT_EQ(editor.CursorColumn(7), 5);
  for (const int width : {5, 4, 1, 0, -2}) {
    EXPECT_EQ(editor.Line(width, false), " [  ]") << width;
    EXPECT_GE(editor.CursorColumn(width), 0) << width;
  }
}

struct NoDetails {
  NoDetails(Frame&, int);
};

TEST(CarouselRadioItem, GoesRoundItsEntries) {
  CarouselRadioItem<int, NoDetails> item(
      "Uplink ", {1, 2, 3}, [](int entry) { return "adapter" + std::to_string(entry); });
  EXPECT_EQ(item.Line(19), "Uplink < adapter1 >");
  for (const auto& [key, current] :
       {std::pair{Key::kLeft, 3}, {Key::kRight, 1}, {Key::kRight, 2}, {Key::kSpace, 2}}) {
    item.PressKey(key);
    EXPECT_EQ(*item.Current(), current);
  }
  EXPECT_EQ(item.Line(18), "Uplink < ad(...) >");
}

}  // namespace
