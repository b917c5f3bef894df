// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"
#include "ui/item_list.h"

namespace Kiva {

/// Turns the host's lockdown mode on or off. The mode is read when the dialog is made. Its result
/// is 1 for Enter, whatever the host made of it (a failure is only logged), and 0 for Escape.
class LockdownDialog : public Dialog {
 public:
  explicit LockdownDialog(Frame& owner);
  int Foreground() override;

 private:
  void LayOut();
  void Handle(int key);
  void Apply();

  bool enabled_;
  ItemList* items_ = nullptr;
  CheckItem* enable_ = nullptr;
};

}  // namespace Kiva
