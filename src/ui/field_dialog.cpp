// SPDX-License-Identifier: MIT
#include "ui/field_dialog.h"

#include "core/keys.h"
#include "ui/message_dialog.h"

namespace Kiva {

InputItem& FieldDialog::AddField(const std::string& label, int fieldWidth) {
  return Rows().Append(std::make_unique<InputItem>(label, fieldWidth));
}

void FieldDialog::PressKey(int key) {
  Item* const row = Rows().Focused();
  const bool isField = row->ShowsCursor();
  if (!isField && (key == 'd' || key == 'D')) return ShowDetails();
  if (isField && !Takes(key) && !Key::isEditing(key)) return;
  row->PressKey(key);
  Rows().Draw();
}

bool FieldDialog::Refuse(const Item& row, TextId title, TextId text) {
  Rows().Focus(row);
  showMessage(*this, title, Text(text));
  return false;
}

}  // namespace Kiva
