// SPDX-License-Identifier: MIT
#include "ui/frame.h"

#include "core/key_wait.h"

namespace Kiva {

Frame::Frame(Frame* owner, const Rect& place, Color background, Color foreground)
    : Window(place, background, foreground), owner_(owner), texts_(*getStringFactory("en_US")) {}

const char* Frame::Text(TextId id) const {
  return texts_.GetString(static_cast<unsigned>(id));
}

void Frame::RefreshOwners() {
  if (!owner_) return;
  owner_->RefreshOwners();
  owner_->Refresh();
}

namespace {

/// Marks a frame as the one in the foreground while it runs, however its run ends.
class InForeground {
 public:
  explicit InForeground(Frame& frame) { keyWait().currentWindow = &frame; }
  ~InForeground() { keyWait().currentWindow = nullptr; }
  InForeground(const InForeground&) = delete;
  InForeground& operator=(const InForeground&) = delete;
};

int runForeground(Frame& frame) {
  const InForeground mark(frame);
  return frame.Foreground();
}

}  // namespace

int runWindow(Frame& frame) {
  keyWait().currentWindow = nullptr;
  Frame* owner = frame.Owner();
  if (owner) owner->SetActive(false);
  frame.SetActive(true);
  const int result = runForeground(frame);
  if (owner) owner->SetActive(true);
  keyWait().currentWindow = owner;
  return result;
}

}  // namespace Kiva
