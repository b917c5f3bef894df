// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "network/adapter_list.h"
#include "ui/dialog.h"
#include "ui/item_list.h"

namespace Kiva {

/// Lets the operator check some of the physical adapters, which have their details behind them.
/// Result 1 with a choice that the dialog deriving from this agrees to, 0 after Escape.
class AdapterChecksDialog : public Dialog {
 public:
  int Foreground() override;

  /// The checked adapters in the order of the list.
  const std::vector<std::string>& Selected() const { return selected_; }

 protected:
  /// The first adapters start checked, as many as `checked` says.
  AdapterChecksDialog(Frame& owner, TextId title, TextId text, Pnics pnics, std::size_t checked);
  /// Whether the operator may have these; false leaves the dialog open.
  virtual bool MayTake(const Pnics& chosen) = 0;

 private:
  void LayOut();
  void Handle(int key);
  void ShowDetails();
  bool Accept();

  const TextId title_, text_;
  const Pnics pnics_;
  const std::size_t checked_;
  std::vector<std::string> selected_;
  ItemList* items_ = nullptr;
  /// One an adapter.
  std::vector<CheckItem*> checks_;
};

}  // namespace Kiva
