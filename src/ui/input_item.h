// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/input_editor.h"
#include "ui/item.h"

namespace Kiva {

/// A one-line text field with a label. It takes every key that its dialog passes on; dialogs filter
/// keys and validate the finished value.
class InputItem : public Item {
 public:
  /// `fieldWidth` in columns; -1 takes about half the row.
  InputItem(std::string label, int fieldWidth, Masking masking = Masking::kNone);

  /// Puts a value in; when it is selected, the next typed character replaces it.
  void SetValue(const std::string& value, Selection selection = Selection::kWhole) {
    editor_.SetValue(value, selection);
  }
  const std::string& Value() const { return editor_.Value(); }

  void Draw(TextArea& row) override;
  void PressKey(int key) override { editor_.Key(key); }
  bool ShowsCursor() const override { return true; }

 private:
  InputEditor editor_;
};

}  // namespace Kiva
