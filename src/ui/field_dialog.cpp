// SPDX-License-Identifier: MIT
#include "ui/field_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "ui/message_dialog.h"

namespace Kiva {

FieldDialog::FieldDialog(Frame& owner, const Look& look)
    : Dialog(owner, look.width, look.height, look.topHeight), look_(look) {
  Window& content = *Content();
  rows_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
}

InputItem& FieldDialog::AddField(const std::string& label, int fieldWidth) {
  return rows_->Append(std::make_unique<InputItem>(label, fieldWidth));
}

int FieldDialog::Foreground() {
  SetTitle(Text(look_.title));
  SetText(Text(look_.text));
  SetFooter(look_.footer);
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

void FieldDialog::Handle(int key) {
  if (key == Key::kUp)
    rows_->MoveUp();
  else if (key == Key::kDown)
    rows_->MoveDown();
  else
    PressKey(key);
}

void FieldDialog::PressKey(int key) {
  Item* row = rows_->Focused();
  if (!row) return;
  const bool isField = row->ShowsCursor();
  if (!isField && (key == 'd' || key == 'D')) return ShowDetails();
  if (isField && !Takes(key) && !Key::isEditing(key)) return;
  row->PressKey(key);
  rows_->Draw();
}

bool FieldDialog::Refuse(const Item& row, TextId title, TextId text) {
  rows_->Focus(row);
  showMessage(*this, title, Text(text));
  return false;
}

}  // namespace Kiva
