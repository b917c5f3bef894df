// SPDX-License-Identifier: MIT
#include "ui/field_dialog.h"

#include "core/keys.h"
#include "ui/message_dialog.h"

namespace Kiva {

InputItem& FieldDialog::AddField(const std::string& label, int fieldWidth) {
  return Rows().Append(std::make_unique<InputItem>(label, fieldWidth));
}

void FieldDialog::PressKey(int key) {
  if (!Takes(key) && !Key::isEditing(key)) return;
  Rows().Focused()->PressKey(key);
  Rows().Draw();
}

bool FieldDialog::Refuse(const InputItem& field, TextId title, TextId text) {
  Rows().Focus(field);
  showMessage(*this, title, Text(text));
  return false;
}

}  // namespace Kiva
