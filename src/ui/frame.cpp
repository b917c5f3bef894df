// SPDX-License-Identifier: MIT
#include "ui/frame.h"

#include "core/key_wait.h"

namespace Kiva {

Frame::Frame(Window* owner, const Rect& place, Color background, Color foreground)
    : Window(place, background, foreground), owner_(owner), texts_(*getStringFactory("en_US")) {}

const char* Frame::Text(TextId id) const {
  return texts_.GetString(static_cast<unsigned>(id));
}

int runWindow(Frame& frame) {
  Window*& current = keyWait().currentWindow;
  Window* owner = frame.Owner();
  current = nullptr;
  if (owner) owner->SetActive(false);
  frame.SetActive(true);
  current = &frame;

  int result = 0;
  try {
    result = frame.Foreground();
  } catch (const KivaTimeout&) {
    current = nullptr;
    throw;
  }
  if (owner) owner->SetActive(true);
  current = owner;
  return result;
}

}  // namespace Kiva
