// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/input_item.h"
#include "ui/list_dialog.h"

namespace Kiva {

/// Asks for values in text fields, one below the other.
class FieldDialog : public ListDialog {
 protected:
  using ListDialog::ListDialog;

  /// Adds a field below the others; `fieldWidth` as for InputItem.
  InputItem& AddField(const std::string& label, int fieldWidth);
  /// Whether a field takes a key, besides those that edit.
  virtual bool Takes(int key) const = 0;
  void PressKey(int key) override;
  /// Tells the operator why Accept refuses a field, which has the focus afterwards; false.
  bool Refuse(const InputItem& field, TextId title, TextId text);
};

}  // namespace Kiva
