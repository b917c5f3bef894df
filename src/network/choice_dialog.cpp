// SPDX-License-Identifier: MIT
#include "network/choice_dialog.h"

#include "core/keys.h"

namespace Kiva {

namespace {

constexpr int kCheckIndentation = 4;

}  // namespace

ChoiceDialog::ChoiceDialog(Frame& owner, Look look)
    : FieldDialog(owner, (look.footer = kMarkFooter, look)) {}

RadioItem& ChoiceDialog::AddChoice(TextId label, bool marked) {
  choices_.push_back(&Rows().Append(std::make_unique<RadioItem>(Text(label), marked)));
  return *choices_.back();
}

CheckItem& ChoiceDialog::AddCheckOf(const RadioItem& choice, TextId label, bool checked) {
  CheckItem& check =
      Rows().Append(std::make_unique<CheckItem>(Text(label), checked, kCheckIndentation));
  dependents_.emplace_back(&check, &choice);
  EnableRows();
  return check;
}

InputItem& ChoiceDialog::AddFieldOf(const RadioItem& choice, const std::string& label,
                                    int fieldWidth, const std::string& value) {
  InputItem& field = AddField(label, fieldWidth);
  field.SetValue(value);
  dependents_.emplace_back(&field, &choice);
  EnableRows();
  return field;
}

void ChoiceDialog::PressKey(int key) {
  Item& row = *Rows().Focused();
  if (row.ShowsCursor())
    FieldDialog::PressKey(key);
  else if (key == Key::kSpace)
    Mark(row);
}

void ChoiceDialog::Mark(Item& row) {
  touched_ = true;
  if (auto* check = dynamic_cast<CheckItem*>(&row))
    check->Toggle();
  else
    for (RadioItem* choice : choices_) choice->SetSelected(choice == &row);
  EnableRows();
  Rows().Draw();
}

void ChoiceDialog::EnableRows() {
  for (const auto& [row, choice] : dependents_)
    row->SetSelectable(choice->IsSelected() ? Selectable::Yes : Selectable::No);
}

}  // namespace Kiva
