// SPDX-License-Identifier: MIT
#include "network/restart_network_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "network/do_restart_network_dialog.h"
#include "ui/footer.h"

namespace Kiva {

RestartNetworkDialog::RestartNetworkDialog(Frame& owner, HostCtl::Network::TarnNic& interface)
    : Dialog(owner, 70, 12, 7), interface_(interface) {
  Window& content = *Content();
  question_ = &content.Make<TextArea>(Rect{0, 0, content.Width(), 1}, kParentColor);
}

int RestartNetworkDialog::Foreground() {
  SetTitle(Text(TextId::kRestartManagementNetworkConfirm));
  SetText(Text(TextId::kRestartingResultsInOutage));
  question_->SetText(Text(TextId::kRestartManagementNetworkNow));
  SetFooter(kF11CancelFooter);
  if (!waitForConfirmation(*this, Key::kF11)) return 0;
  DoRestartNetworkDialog dialog(*this, interface_);
  return runWindow(dialog);
}

}  // namespace Kiva
