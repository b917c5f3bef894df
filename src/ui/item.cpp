// SPDX-License-Identifier: MIT
#include "ui/item.h"

#include "ui/text_area.h"

namespace Kiva {

LabelItem::LabelItem(std::string label, Selectable selectable, int indentation)
    : Item(selectable), label_(std::move(label)), indentation_(indentation) {}

void LabelItem::Draw(TextArea& row) {
  row.SetText(std::string(static_cast<size_t>(indentation_), ' ') + Mark() + label_);
}

CheckItem::CheckItem(std::string label, bool checked, int indentation)
    : LabelItem(std::move(label), Selectable::Yes, indentation), checked_(checked) {}

RadioItem::RadioItem(std::string label, bool selected, int indentation)
    : LabelItem(std::move(label), Selectable::Yes, indentation), selected_(selected) {}

}  // namespace Kiva
