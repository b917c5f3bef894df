// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/network/nic.h"
#include "ui/dialog.h"
#include "ui/progress_area.h"

namespace Kiva {

/// Asks whether the management network and its uplinks shall move onto a new standard switch, and
/// moves them after F11, whole or not at all, each step shown. Result 1 when they are there, 0
/// after Escape. The network restore options open it.
class SafeModeNetworkDialog : public Dialog {
 public:
  explicit SafeModeNetworkDialog(Frame& owner);
  int Foreground() override;

 private:
  /// False leaves the dialog open, after a message why.
  bool Restore();
  bool Move(HostCtl::Network::TarnNic& nic);

  ProgressArea* progress_ = nullptr;
};

}  // namespace Kiva
