// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"
#include "ui/item.h"

namespace Kiva {

/// Shuts the host down or restarts it, with or without forcing its virtual machines, when the
/// operator says so with F2 or F11. Opened by F12 on the welcome screen, after a login. Its result
/// is 0: only Escape leaves it.
class ShutdownDialog : public Dialog {
 public:
  explicit ShutdownDialog(Frame& owner);
  int Foreground() override;

 private:
  void Handle(int key);
  void DrawChoice();

  CheckItem forced_;
  TextArea* choice_ = nullptr;
};

}  // namespace Kiva
