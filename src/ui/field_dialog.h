// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/dialog.h"
#include "ui/input_item.h"
#include "ui/item_list.h"

namespace Kiva {

/// Asks for values in text fields, one below the other. Enter gives 1 once the dialog that derives
/// from this accepts what was typed, Escape 0.
class FieldDialog : public Dialog {
 public:
  int Foreground() override;

 protected:
  /// Sizes in cells.
  struct Look {
    TextId title, text;
    int width, height, topHeight;
  };
  FieldDialog(Frame& owner, const Look& look);

  /// Adds a field below the others; `fieldWidth` as for InputItem.
  InputItem& AddField(TextId label, int fieldWidth);
  /// Whether a field takes a key, besides those that edit.
  virtual bool Takes(int key) const = 0;
  /// Acts on what the fields hold; false leaves the dialog open.
  virtual bool Accept() = 0;

 private:
  void Handle(int key);

  const Look look_;
  ItemList* fields_ = nullptr;
};

}  // namespace Kiva
