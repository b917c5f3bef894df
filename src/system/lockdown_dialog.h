// SPDX-License-Identifier: MIT
#pragma once

#include "ui/list_dialog.h"

namespace Kiva {

/// Turns the host's lockdown mode on or off. The mode is read when the dialog is made. Its result
/// is 1 for Enter, whatever the host made of it (a failure is only logged), and 0 for Escape.
class LockdownDialog : public ListDialog {
 public:
  explicit LockdownDialog(Frame& owner);

 private:
  void PressKey(int key) override;
  bool Accept() override;

  const bool enabled_;
  CheckItem& enable_;
};

}  // namespace Kiva
