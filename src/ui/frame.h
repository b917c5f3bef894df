// SPDX-License-Identifier: MIT
#pragma once

#include "core/window.h"
#include "ui/string_factory.h"
#include "ui/text_id.h"

namespace Kiva {

/// A window that can be shown modally: the welcome screen, a full-screen menu, a dialog. The code
/// that needs one creates it, hands it to runWindow and destroys it when that returns; its owner,
/// the frame that was in front, outlives it.
class Frame : public Window {
 public:
  /// Null owner: the frame at the bottom of the stack.
  Frame(Frame* owner, const Rect& place, Color background, Color foreground);

  /// Runs the frame's own key loop; its result is what runWindow returns: positive for accepted, 0
  /// for cancelled.
  virtual int Foreground() = 0;

  Frame* Owner() const { return owner_; }

 protected:
  /// A text of the catalogue.
  const char* Text(TextId id) const;
  /// Puts every frame below this one back on the screen, the lowest first.
  void RefreshOwners();

 private:
  Frame* owner_;
  StringFactory& texts_;
};

/// Shows `frame` over its owner until it is done: the owner is dimmed meanwhile and comes back
/// afterwards. KivaTimeout passes through without bringing the owner back.
int runWindow(Frame& frame);

}  // namespace Kiva
