// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ui/field_dialog.h"

namespace Kiva {

/// Asks for one of several choices, of which some have a check or fields of their own: these can be
/// reached only while their choice is marked, and keep their values meanwhile. Space marks and
/// toggles. The dialogs that configure the management interface derive from it.
class ChoiceDialog : public FieldDialog {
 public:
  /// Whether the operator has marked or toggled anything, be it what it was before.
  bool WasTouched() const { return touched_; }

 protected:
  /// The footer is its own.
  ChoiceDialog(Frame& owner, Look look);

  /// Each adds a row below the others; exactly one choice is to be marked.
  RadioItem& AddChoice(TextId label, bool marked);
  CheckItem& AddCheckOf(const RadioItem& choice, TextId label, bool checked);
  InputItem& AddFieldOf(const RadioItem& choice, const std::string& label, int fieldWidth,
                        const std::string& value);

 private:
  void PressKey(int key) override;
  void Mark(Item& row);
  void EnableRows();

  std::vector<RadioItem*> choices_;
  std::vector<std::pair<Item*, const RadioItem*>> dependents_;
  bool touched_ = false;
};

}  // namespace Kiva
