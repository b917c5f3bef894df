// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/text_area.h"

namespace Kiva {

/// Tells the operator how far a slow operation is, one line a step, while no key is waited for.
class ProgressArea : public TextArea {
 public:
  ProgressArea(Window& parent, const Rect& place) : TextArea(parent, place, kDarkGrey) {}

  /// Shows what is asked before the first step, and forgets all earlier ones.
  void Ask(const std::string& question);
  /// Shows the step that is about to begin in black below the earlier ones, and sends it to the
  /// terminal. The first one replaces the text; where there is no room, the earliest go.
  void Begin(const std::string& step);
  /// The last step is done: all of them are dark grey.
  void End() { SetText(steps_); }

 private:
  std::string steps_;
};

}  // namespace Kiva
