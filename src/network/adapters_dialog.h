// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "network/adapter_list.h"
#include "ui/list_dialog.h"

namespace Kiva {

/// Lets the operator choose the physical adapters that carry the management network, and asks
/// before it takes one that another switch uses. Result 1 with a choice, 0 after Escape.
class AdaptersDialog : public ListDialog {
 public:
  /// `switchName` is the management port group's switch, which may have what it has. `selected`
  /// starts checked, at the top of the list and in this order.
  AdaptersDialog(Frame& owner, std::string switchName, std::vector<std::string> selected);

  /// The checked adapters in the order of the list: the primary one first.
  const std::vector<std::string>& Selected() const { return selected_; }

 private:
  void PressKey(int key) override;
  bool Accept() override;
  void ShowDetails();
  bool MayTakeUsed();
  bool IsUsedElsewhere(const Pnics& pnics) const;

  std::vector<std::string> selected_;
  const Pnics pnics_;
  const std::string switchName_;
  /// One an adapter.
  std::vector<CheckItem*> checks_;
};

}  // namespace Kiva
