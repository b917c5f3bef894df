// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "harness/screen.h"

namespace Harness {

/// Moves the focus of a menu or a list down to the first entry with this text in it.
template <typename Terminal>
void focusOn(Terminal& terminal, const std::string& text) {
  constexpr int kMostEntries = 300;
  for (int i = 0; i < kMostEntries; ++i) {
    const std::string before = focusedText(terminal.Look());
    if (before.find(text) != std::string::npos) return;
    terminal.Press("Down");
    terminal.WaitUntil([&](const Screen& now) { return focusedText(now) != before; },
                       "the focus to leave " + before + " on the way to " + text);
  }
}

/// Takes the steps of an operator at `terminal`, one after the other: a key ("F2"), "type:TEXT",
/// "wait:TEXT", "gone:TEXT", "focus:TEXT" (see focusOn) and "choose:TEXT", which presses Enter
/// there.
template <typename Terminal>
void takeSteps(Terminal& terminal, const std::vector<std::string>& steps) {
  for (const std::string& step : steps) {
    const std::string text = step.substr(std::min(step.find(':') + 1, step.size()));
    if (step.starts_with("type:")) {
      terminal.Type(text);
    } else if (step.starts_with("wait:")) {
      terminal.WaitFor(text);
    } else if (step.starts_with("gone:")) {
      terminal.WaitForGone(text);
    } else if (step.starts_with("focus:") || step.starts_with("choose:")) {
      terminal.WaitFor(text);
      focusOn(terminal, text);
      if (step.starts_with("choose:")) terminal.Press("Enter");
    } else {
      terminal.Press(step);
    }
  }
}

}  // namespace Harness
