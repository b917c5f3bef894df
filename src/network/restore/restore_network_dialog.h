// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"

namespace Kiva {

/// Asks whether the host's network shall be that of a fresh host again. F11, and nothing that is
/// pressed by mistake, restores it with DoRestoreNetworkDialog and notes it as an event, whatever
/// came of it (1); Escape changes nothing (0).
class RestoreNetworkDialog : public Dialog {
 public:
  explicit RestoreNetworkDialog(Frame& owner);
  int Foreground() override;

 private:
  void Restore();

  TextArea* question_ = nullptr;
};

}  // namespace Kiva
