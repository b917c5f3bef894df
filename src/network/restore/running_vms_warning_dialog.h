// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"

namespace Kiva {

/// Warns that virtual machines run before they are powered off: 1 when the operator goes on with
/// Enter, 0 for Escape.
class RunningVMsWarningDialog : public Dialog {
 public:
  explicit RunningVMsWarningDialog(Frame& owner);
  int Foreground() override;
};

}  // namespace Kiva
