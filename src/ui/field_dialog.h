// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/dialog.h"
#include "ui/footer.h"
#include "ui/input_item.h"
#include "ui/item_list.h"

namespace Kiva {

/// Asks for values in text fields and rows of other kinds, one below the other. Enter gives 1 once
/// the dialog that derives from this accepts what was typed, Escape 0.
class FieldDialog : public Dialog {
 public:
  int Foreground() override;

 protected:
  /// Sizes in cells.
  struct Look {
    TextId title, text;
    int width, height, topHeight;
    std::string footer = kOkCancelFooter;
  };
  FieldDialog(Frame& owner, const Look& look);

  /// Adds a field below the others; `fieldWidth` as for InputItem.
  InputItem& AddField(const std::string& label, int fieldWidth);
  /// Whether a field takes a key, besides those that edit.
  virtual bool Takes(int key) const = 0;
  /// Acts on what the fields hold; false leaves the dialog open.
  virtual bool Accept() = 0;
  /// A key for the focused row: a field gets what it takes, a carousel all but the key that shows
  /// its current entry's details.
  virtual void PressKey(int key);
  virtual void ShowDetails() {}
  /// Tells the operator why Accept refuses a row, which has the focus afterwards; false.
  bool Refuse(const Item& row, TextId title, TextId text);
  ItemList& Rows() const { return *rows_; }

 private:
  void Handle(int key);

  const Look look_;
  ItemList* rows_ = nullptr;
};

}  // namespace Kiva
