// SPDX-License-Identifier: MIT
#include "ui/list_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"

namespace Kiva {

ListDialog::ListDialog(Frame& owner, const Look& look)
    : Dialog(owner, look.width, look.height, look.topHeight), look_(look) {
  Window& content = *Content();
  const int heading = look.headingRows;
  rows_ = &content.Make<ItemList>(Rect{0, heading, content.Width(), content.Height() - heading});
}

int ListDialog::Foreground() {
  SetTitle(Text(look_.title));
  SetText(Text(look_.text));
  SetFooter(look_.footer);
  AddRows();
  rows_->FocusStart();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (key != Key::kEnter)
      Handle(key);
    else if (Accept())
      return 1;
  }
}

void ListDialog::Handle(int key) {
  if (key == Key::kUp)
    rows_->MoveUp();
  else if (key == Key::kDown)
    rows_->MoveDown();
  else if (rows_->Focused())
    PressKey(key);
}

}  // namespace Kiva
