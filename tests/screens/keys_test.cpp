// SPDX-License-Identifier: MIT
// The keys of every kind of terminal, and what comes in that is no key.
#include <gtest/gtest.h>

#include <csignal>

#include "harness/terminal.h"
#include "tests/screens/steps.h"

namespace Harness {
namespace {

constexpr KeyFamily kFamilies[] = {KeyFamily::kXterm, KeyFamily::kVt220, KeyFamily::kVt100,
                                   KeyFamily::kBracketLetter, KeyFamily::kEscapeDigit};

/// A lone Escape is told from a key's sequence by the time that follows it: here a short one.
Launch withQuickEscape(const DemoHost& host, const std::string& term = "xterm-256color") {
  return {host.Demo().arguments, term, {{"ESCDELAY", "25"}}};
}

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
      const DemoHost host;
      Terminal terminal(withQuickEscape(host, term));
      terminal.WaitFor(kWelcome);
      const Screen welcome = seen(terminal);
      terminal.UseKeys(family);
      for (const char* key : {"F2", "F12"}) {
        terminal.Press(key);
        terminal.WaitFor(kLogin);
        terminal.Do({"F3", "wait:PIN:", "Esc", "gone:PIN:"});
      }
      EXPECT_EQ(seen(terminal), welcome);
      terminal.Press("F4");
      EXPECT_EQ(seen(terminal) == welcome, std::string(term) != "xterm-256color");
      terminal.Press("F4");
      EXPECT_EQ(seen(terminal), welcome);
      for (const char* key : {"F1", "F5", "F6", "F7", "F8", "F9"}) {
        terminal.Press(key);
        EXPECT_EQ(seen(terminal), welcome) << key;
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
    const DemoHost host;
    Terminal terminal(withQuickEscape(host));
    const bool hasEditKeys = family != KeyFamily::kVt100 && family != KeyFamily::kBracketLetter;
    for (const auto& [strokes, value] : cases) {
      SCOPED_TRACE(testing::PrintToString(strokes));
      terminal.UseKeys(KeyFamily::kXterm);
      openLogin(terminal);
      if (hasEditKeys) terminal.UseKeys(family);
      terminal.Do(strokes);
      EXPECT_EQ(fieldOf(terminal.Look(), "Login Name:"), value);
      terminal.Do({"Esc", "gone:Authentication Required"});
    }
    terminal.UseKeys(KeyFamily::kXterm);
    logIn(terminal);
    const Screen first = seen(terminal);
    terminal.UseKeys(family);
    terminal.Press("Down");
    EXPECT_TRUE(terminal.Look().Shows("lockdown mode prevents")) << terminal.Look().Dump();
    terminal.Press("Up");
    EXPECT_EQ(seen(terminal), first);
  }
}

TEST(Keys, EscapeAndADigitTypedByHand) {
  const DemoHost host;
  Terminal terminal(host.Demo());
  terminal.WaitFor(kWelcome);
  const Screen welcome = seen(terminal);
  for (const char* digit : {"2", "@"}) {
    terminal.Send("\033");
    std::this_thread::sleep_for(std::chrono::milliseconds(300));  // an operator's fingers
    terminal.Send(digit);
    terminal.WaitFor(kLogin);
    terminal.Press("Esc");
    terminal.WaitForGone(kLogin);
    EXPECT_EQ(seen(terminal), welcome) << "Escape alone";
  }
}

TEST(Keys, KeypadEnterIsEnter) {
  const DemoHost host;
  Terminal terminal(withQuickEscape(host));
  openLogin(terminal);
  terminal.Do({"type:\033OM", "type:demo", "type:\033OM"});
  terminal.WaitFor(kMenu);
  const Screen menu = seen(terminal);
  terminal.Type("\033OM");
  EXPECT_EQ(seen(terminal), menu) << "still logged in";
}

TEST(Keys, AKeyBehindEscapeIsNotLost) {
  const DemoHost host;
  Terminal terminal(withQuickEscape(host));
  openLogin(terminal);
  terminal.Do({"Enter", "Enter", "wait:Authentication failed"});
  terminal.Type("\033\r");  // Escape says nothing here, Enter closes the message
  EXPECT_FALSE(terminal.Look().Shows("Authentication failed")) << terminal.Look().Dump();
}

TEST(Keys, BytesThatAreNoKey) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte)
    // Not what the terminal itself acts upon: interrupt, quit, and stop and start of its output.
    if (byte != 3 && byte != 0x1c && byte != 0x11 && byte != 0x13) bytes += static_cast<char>(byte);
  const DemoHost host;
  Terminal terminal(withQuickEscape(host));
  terminal.WaitFor(kWelcome);
  const Screen welcome = seen(terminal);
  for (const char byte : bytes) terminal.Type(std::string(1, byte));
  EXPECT_EQ(seen(terminal), welcome);
  openLogin(terminal);
  for (const std::string& sequence : {std::string("\033[99;99;99z"), std::string("\033[<0;1;1M"),
                                      std::string("\xc3\x28\xff\xfe\xf8"), bytes + bytes}) {
    terminal.Type(sequence);
    EXPECT_TRUE(staysIdle(terminal)) << terminal.Look().Dump();
    if (!terminal.Look().Shows(kLogin)) openLogin(terminal);
  }
  terminal.Do({"Down", "Up"});
  EXPECT_TRUE(staysIdle(terminal));
}

/// As a terminal passes it on, in the pieces that it can hold.
void paste(Terminal& terminal, const std::string& text) {
  constexpr std::size_t kPiece = 4000;
  for (std::size_t at = 0; at < text.size(); at += kPiece) {
    terminal.Send(text.substr(at, kPiece));
    terminal.Settle();
  }
}

std::string repeated(std::string_view text, std::size_t size) {
  std::string all;
  while (all.size() < size) all += text;
  return all;
}

TEST(Keys, AFloodOfKeysAndALongPaste) {
  constexpr std::size_t kLongest = 100000;
  constexpr std::size_t kLong = 10000;
  const DemoHost host;
  Terminal terminal(withQuickEscape(host));
  terminal.WaitFor(kWelcome);
  paste(terminal, repeated("\033[A\033[B", kLongest));
  openLogin(terminal);
  paste(terminal, repeated("{ip}\xc3\xa4", kLongest));
  EXPECT_TRUE(terminal.Look().Shows(kLogin));
  EXPECT_TRUE(staysIdle(terminal));
  terminal.Do({"Home", "Enter"});
  paste(terminal, repeated("secret {", kLong));
  terminal.Do({"Enter", "wait:Authentication failed"});
  paste(terminal, repeated("x \033[B", kLong));
  EXPECT_TRUE(terminal.Look().Shows("Authentication failed"));
  EXPECT_TRUE(staysIdle(terminal));
  terminal.Do({"Enter", "Esc"});
  terminal.WaitForGone(kLogin);

  logIn(terminal);
  paste(terminal, repeated("\033[B\033[B\033[A\n", kLong));
  EXPECT_TRUE(terminal.Look().Shows(kMenu));
  EXPECT_TRUE(staysIdle(terminal));
  terminal.Signal(SIGTERM);
  EXPECT_EQ(terminal.WaitForExit(), 0);
}

}  // namespace
}  // namespace Harness
