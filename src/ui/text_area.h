// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/window.h"

namespace Kiva {

/// How a text area tells that it has no room for the whole of its text.
enum class Overflow { Hidden, Marked };

/// A block of markup text inside another window: a dialog's body, a pane, a panel of the welcome
/// screen. Lays its whole text out and draws it again at every change; text below its last row is
/// not drawn, and where that is marked, the last row ends in "(...)". Keywords in the text are
/// expanded each time.
class TextArea : public Window {
 public:
  /// The background is the parent's; `foreground` may be kParentColor. A text given here is drawn
  /// when the area's window is activated.
  TextArea(Window& parent, const Rect& place, Color foreground, std::string text = "",
           Overflow overflow = Overflow::Hidden);

  void SetText(std::string text);
  void AppendText(const std::string& text);

 protected:
  /// A change of looks lays the text out anew.
  void Recolor() override { Draw(); }

 private:
  void Draw();

  std::string text_;
  const Overflow overflow_;
};

}  // namespace Kiva
