// SPDX-License-Identifier: MIT
#include "ui/input_item.h"

#include "ui/text_area.h"

namespace Kiva {

InputItem::InputItem(std::string label, int fieldWidth, Masking masking)
    : Item(Selectable::Yes), editor_(std::move(label), fieldWidth, masking) {}

void InputItem::Draw(TextArea& row) {
  row.SetText(editor_.Line(row.Width(), IsFocused()));
  if (IsFocused() && row.IsActive()) row.MoveCursor(editor_.CursorColumn(row.Width()), 0);
}

}  // namespace Kiva
