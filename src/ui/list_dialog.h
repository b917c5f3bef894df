// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/dialog.h"
#include "ui/footer.h"
#include "ui/item_list.h"

namespace Kiva {

/// Asks for what the rows of a list hold: Up and Down move the focus, Enter gives 1 once the dialog
/// that derives from this accepts, Escape 0, and other keys are for the focused row.
class ListDialog : public Dialog {
 public:
  int Foreground() override;

 protected:
  /// Sizes in cells; `headingRows` are the rows of the content that the list leaves free above it.
  struct Look {
    TextId title, text;
    int width, height, topHeight;
    std::string footer = kOkCancelFooter;
    int headingRows = 0;
  };
  ListDialog(Frame& owner, const Look& look);

  /// Adds the rows that can be known, or fail, only when the dialog's texts are shown already.
  virtual void AddRows() {}
  /// Any other key, while a row has the focus.
  virtual void PressKey(int key) = 0;
  /// Acts on what the rows hold; false leaves the dialog open.
  virtual bool Accept() = 0;
  ItemList& Rows() const { return *rows_; }

 private:
  void Handle(int key);

  const Look look_;
  ItemList* rows_ = nullptr;
};

}  // namespace Kiva
