// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"

namespace Kiva {

/// Puts the host's configuration back to its defaults and restarts it, once the operator has
/// confirmed with F11; Enter alone confirms nothing. Its result is 0: for Escape, and for a reset
/// or a restart that failed. A reset that worked is never left.
class RestoreDialog : public Dialog {
 public:
  explicit RestoreDialog(Frame& owner);
  int Foreground() override;

 private:
  bool Confirm();
  /// False when the host's configuration could not be reset.
  bool Reset();
  void Restart();

  TextArea* question_ = nullptr;
};

}  // namespace Kiva
