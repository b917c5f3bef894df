// SPDX-License-Identifier: MIT
// The keys of every kind of terminal, and what comes in that is no key.
#include <gtest/gtest.h>

#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr KeyFamily kFamilies[] = {KeyFamily::kXterm, KeyFamily::kVt220, KeyFamily::kVt100,
                                   KeyFamily::kBracketLetter, KeyFamily::kEscapeDigit};

/// A lone Escape is told from a key's sequence by the time that follows it: here a short one.
const Setup kQuickEscape{.environment = {{"ESCDELAY", "25"}}};

/// The row's text between the brackets of a field.
std::string fieldOf(const Screen& screen, std::string_view label) {
  const auto place = screen.Find(label);
  if (!place) return "no such field";
  std::string row = screen.Row(place->row);
  row = row.substr(row.find('[') + 2);
  row = row.substr(0, row.find(']'));
  return row.substr(0, row.find_last_not_of(' ') + 1);
}

TEST(Keys, FunctionKeysOfEveryFamily) {
  for (const char* term : {"xterm-256color", "xterm", "vt102"}) {
    for (const KeyFamily family : kFamilies) {
      SCOPED_TRACE(term + std::to_string(static_cast<int>(family)));
      Demo demo({}, {.term = term, .environment = kQuickEscape.environment});
      const Screen welcome = demo.Look();
      demo.UseKeys(family);
      for (const char* key : {"F2", "F12"}) {
        demo.Press(key);
        demo.WaitFor(kLogin);
        demo.Do({"F3", "wait:PIN:", "Esc", "gone:PIN:"});
      }
      EXPECT_EQ(demo.Look(), welcome);
      demo.Press("F4");
      EXPECT_EQ(demo.Look() == welcome, std::string(term) != "xterm-256color");
      demo.Press("F4");
      EXPECT_EQ(demo.Look(), welcome);
      for (const char* key : {"F1", "F5", "F6", "F7", "F8", "F9"}) {
        demo.Press(key);
        EXPECT_EQ(demo.Look(), welcome) << key;
      }
    }
  }
}

TEST(Keys, EditTheLoginNameAndMoveInTheMenu) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"Home", "type:x"}, "xroot"},
      {{"Left", "type:x"}, "rooxt"},
      {{"Home", "Right", "type:x"}, "rxoot"},
      {{"Home", "End", "type:x"}, "rootx"},
      {{"Home", "Delete"}, "oot"},
      {{"End", "Backspace"}, "roo"},
      {{"Insert", "PageUp", "PageDown"}, "root"}};
  for (const KeyFamily family : kFamilies) {
    Demo demo({}, kQuickEscape);
    const bool hasEditKeys = family != KeyFamily::kVt100 && family != KeyFamily::kBracketLetter;
    for (const auto& [strokes, value] : cases) {
      SCOPED_TRACE(testing::PrintToString(strokes));
      demo.UseKeys(KeyFamily::kXterm);
      openLogin(demo);
      if (hasEditKeys) demo.UseKeys(family);
      demo.Do(strokes);
      EXPECT_EQ(fieldOf(demo.Look(), "Login Name:"), value);
      demo.Do({"Esc", "gone:Authentication Required"});
    }
    demo.UseKeys(KeyFamily::kXterm);
    logIn(demo);
    const Screen first = demo.Look();
    demo.UseKeys(family);
    demo.Press("Down");
    EXPECT_TRUE(demo.Look().Shows("lockdown mode prevents")) << demo.Look().Dump();
    demo.Press("Up");
    EXPECT_EQ(demo.Look(), first);
  }
}

TEST(Keys, EscapeAndADigitTypedByHand) {
  Demo demo;
  const Screen welcome = demo.Look();
  for (const char* digit : {"2", "@"}) {
    demo.Send("\033");
    std::this_thread::sleep_for(std::chrono::milliseconds(300));  // an operator's fingers
    demo.Send(digit);
    demo.WaitFor(kLogin);
    demo.Press("Esc");
    demo.WaitForGone(kLogin);
    EXPECT_EQ(demo.Look(), welcome) << "Escape alone";
  }
}

TEST(Keys, KeypadEnterIsEnter) {
  Demo demo({}, kQuickEscape);
  openLogin(demo);
  demo.Do({"type:\033OM", "type:demo", "type:\033OM"});
  demo.WaitFor(kMenu);
  demo.Type("\033OM");
  EXPECT_TRUE(demo.Look().Shows("Old Password:"));
}

TEST(Keys, AKeyBehindEscapeIsNotLost) {
  Demo demo({}, kQuickEscape);
  openLogin(demo);
  demo.Do({"Enter", "Enter", "wait:Authentication failed"});
  demo.Type("\033\r");  // Escape says nothing here, Enter closes the message
  EXPECT_FALSE(demo.Look().Shows("Authentication failed")) << demo.Look().Dump();
}

std::string repeated(std::string_view text) {
  std::string all;
  for (int i = 0; i < 5000; ++i) all += text;
  return all;
}

TEST(Keys, AFloodOfKeysAndALongPaste) {
  Demo demo({}, kQuickEscape);
  demo.Type(repeated("\033[A\033[B"));
  openLogin(demo);
  demo.Type(repeated("{ip}\xc3\xa4"));
  EXPECT_TRUE(demo.StaysIdle());
  demo.Do({"Home", "Enter"});
  demo.Type(repeated("pass {"));
  demo.Do({"Enter", "wait:Authentication failed"});
  demo.Type(repeated("x \033[B"));
  EXPECT_TRUE(demo.Look().Shows("Authentication failed"));
  demo.Do({"Enter", "Esc", "gone:Authentication Required"});
  logIn(demo);
  demo.Type(repeated("\033[B\033[B\033[A\n"));
  EXPECT_TRUE(demo.Look().Shows(kMenu));
  EXPECT_TRUE(demo.StaysIdle());
}

}  // namespace
