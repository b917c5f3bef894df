// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"

namespace Kiva {

/// Asks whether adapters may be taken from the connections that use them: 1 for Enter, 0 for
/// Escape.
class UsedAdaptersDialog : public Dialog {
 public:
  explicit UsedAdaptersDialog(Frame& owner);
  int Foreground() override;
};

}  // namespace Kiva
