// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/input_item.h"
#include "ui/list_dialog.h"

namespace Kiva {

/// Asks for values in text fields and rows of other kinds, one below the other.
class FieldDialog : public ListDialog {
 protected:
  using ListDialog::ListDialog;

  /// Adds a field below the others; `fieldWidth` as for InputItem.
  InputItem& AddField(const std::string& label, int fieldWidth);
  /// Whether a field takes a key, besides those that edit.
  virtual bool Takes(int key) const = 0;
  /// A field gets what it takes, a carousel all but the key that shows its current entry's details.
  void PressKey(int key) override;
  virtual void ShowDetails() {}
  /// Tells the operator why Accept refuses a row, which has the focus afterwards; false.
  bool Refuse(const Item& row, TextId title, TextId text);
};

}  // namespace Kiva
