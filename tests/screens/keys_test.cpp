// SPDX-License-Identifier: MIT
// The keys of every kind of terminal, and what comes in that is no key.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr KeyFamily kFamilies[] = {KeyFamily::kXterm, KeyFamily::kVt220, KeyFamily::kVt100,
                                   KeyFamily::kBracketLetter, KeyFamily::kEscapeDigit};

TEST(Keys, FunctionKeysOfEveryFamily) {
  for (const char* term : {"xterm-256color", "xterm", "vt102"}) {
    for (const KeyFamily family : kFamilies) {
      SCOPED_TRACE(term + std::to_string(static_cast<int>(family)));
      Demo demo({}, {.term = term, .environment = kQuickEscape.environment});
      const Screen welcome = demo.Look();
      demo.UseKeys(family);
      for (const char* key : {"F2", "F12"})
        demo.Do({key, "wait:Authentication Required", "F3", "wait:PIN:", "Esc", "gone:PIN:"});
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
  for (const KeyFamily family : kFamilies) {
    SCOPED_TRACE(static_cast<int>(family));
    Demo demo({}, kQuickEscape);
    openLogin(demo);
    if (family != KeyFamily::kVt100 && family != KeyFamily::kBracketLetter) demo.UseKeys(family);
    demo.Do({"Home", "type:1", "End", "type:2", "Left", "type:3", "Home", "Right", "type:4", "Home",
             "Delete", "End", "Backspace", "Insert", "PageUp", "PageDown", "wait:[ 4root3  "});
    demo.UseKeys(KeyFamily::kXterm);
    demo.Do({"Esc", "gone:Authentication Required"});
    logIn(demo);
    const Screen first = demo.Look();
    demo.UseKeys(family);
    demo.Do({"Down", "wait:lockdown mode prevents", "Up"});
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
    demo.Do({"Esc", "gone:Authentication Required"});
    EXPECT_EQ(demo.Look(), welcome) << "Escape alone";
  }
}

TEST(Keys, AKeyBehindEscapeIsNotLostAndKeypadEnterIsEnter) {
  Demo demo({}, kQuickEscape);
  openLogin(demo);
  demo.Do({"type:\033OM", "type:\033OM", "wait:Authentication failed"});
  demo.Type("\033\r");  // Escape says nothing here, Enter closes the message
  EXPECT_FALSE(demo.Look().Shows("Authentication failed")) << demo.Look().Dump();
  demo.Do(
      {"type:demo", "type:\033OM", "wait:System Customization", "type:\033OM", "wait:Old Pass"});
}

TEST(Keys, AFloodOfKeysAndALongPaste) {
  constexpr int kFlood = 5000;
  Demo demo({}, kQuickEscape);
  demo.Type(repeated("\033[A\033[B", kFlood));
  openLogin(demo);
  demo.Type(repeated("{ip}\xc3\xa4", kFlood));
  EXPECT_TRUE(demo.StaysIdle());
  demo.Do({"Home", "Enter"});
  demo.Type(repeated("pass {", kFlood));
  demo.Do({"Enter", "wait:Authentication failed"});
  demo.Type(repeated("x \033[B", kFlood));
  demo.Do({"wait:Authentication failed", "Enter", "Esc", "gone:Authentication Required"});
  logIn(demo);
  demo.Type(repeated("\033[B\033[B\033[A\n", kFlood));
  EXPECT_FALSE(demo.Look().Shows(kWelcome)) << "nobody has logged out";
  EXPECT_TRUE(demo.StaysIdle());
  EXPECT_EQ(demo.Stop(), 0);
}

}  // namespace
