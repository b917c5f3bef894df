// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/network/nic.h"
#include "ui/dialog.h"

namespace Kiva {

/// Asks whether the management interface shall be taken down and up again. F11, and nothing that is
/// pressed by mistake, restarts it with DoRestartNetworkDialog; Escape leaves it alone (0).
class RestartNetworkDialog : public Dialog {
 public:
  RestartNetworkDialog(Frame& owner, HostCtl::Network::TarnNic& interface);
  int Foreground() override;

 private:
  HostCtl::Network::TarnNic& interface_;
  TextArea* question_ = nullptr;
};

}  // namespace Kiva
