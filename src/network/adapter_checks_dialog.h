// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "network/adapter_list.h"
#include "ui/list_dialog.h"

namespace Kiva {

/// Lets the operator check some of the physical adapters, which have their details behind them.
/// Result 1 with a choice that the dialog deriving from this agrees to, 0 after Escape.
class AdapterChecksDialog : public ListDialog {
 public:
  /// The checked adapters in the order of the list.
  const std::vector<std::string>& Selected() const { return selected_; }

 protected:
  /// The first adapters start checked, as many as `checked` says.
  AdapterChecksDialog(Frame& owner, TextId title, TextId text, Pnics pnics, std::size_t checked);
  /// Whether the operator may have these; false leaves the dialog open.
  virtual bool MayTake(const Pnics& chosen) = 0;

 private:
  void PressKey(int key) override;
  bool Accept() override;
  void ShowDetails();

  const Pnics pnics_;
  std::vector<std::string> selected_;
  /// One an adapter.
  std::vector<CheckItem*> checks_;
};

}  // namespace Kiva
