// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace Harness {

/// Takes the steps of an operator at `terminal`, one after the other: a key ("F2"), "type:TEXT",
/// "wait:TEXT" and "gone:TEXT".
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
    } else {
      terminal.Press(step);
    }
  }
}

}  // namespace Harness
