// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "ui/menu_window.h"

namespace Kiva {

/// What an operator can do for a host whose management network is broken: the repairs on the left,
/// what the selected one is about on the right. Opened from the menu, where the network itself need
/// not work; asks nothing of the host itself.
class NetworkRestoreWindow : public MenuWindow<NetworkRestoreWindow> {
 public:
  explicit NetworkRestoreWindow(Frame& owner);

 private:
  static const std::vector<Entry>& Entries();

  template <typename Dialog>
  void Open();
};

}  // namespace Kiva
