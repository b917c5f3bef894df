// SPDX-License-Identifier: MIT
#include "ui/field_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "ui/footer.h"

namespace Kiva {

FieldDialog::FieldDialog(Frame& owner, const Look& look)
    : Dialog(owner, look.width, look.height, look.topHeight), look_(look) {
  Window& content = *Content();
  fields_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
}

InputItem& FieldDialog::AddField(TextId label, int fieldWidth) {
  return fields_->Append(std::make_unique<InputItem>(Text(label), fieldWidth));
}

int FieldDialog::Foreground() {
  SetTitle(Text(look_.title));
  SetText(Text(look_.text));
  SetFooter(kOkCancelFooter);
  fields_->FocusStart();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (key != Key::kEnter)
      Handle(key);
    else if (Accept())
      return 1;
  }
}

void FieldDialog::Handle(int key) {
  if (key == Key::kUp) {
    fields_->MoveUp();
  } else if (key == Key::kDown) {
    fields_->MoveDown();
  } else if (Takes(key) || Key::isEditing(key)) {
    fields_->Focused()->PressKey(key);
    fields_->Draw();
  }
}

}  // namespace Kiva
