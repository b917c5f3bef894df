// SPDX-License-Identifier: MIT
#include "network/restore/safe_mode_network_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "network/restore/outcome.h"
#include "network/restore/safe_mode_move.h"
#include "system/audit_events.h"
#include "system/host_tools.h"
#include "ui/footer.h"
#include "ui/markup_text.h"

namespace Kiva {

SafeModeNetworkDialog::SafeModeNetworkDialog(Frame& owner) : Dialog(owner, 70, 17, 7) {
  Window& content = *Content();
  progress_ = &content.Make<ProgressArea>(Rect{0, 0, content.Width(), content.Height()});
}

int SafeModeNetworkDialog::Foreground() {
  SetTitle(Text(TextId::kRestoreStandardSwitchTitle));
  SetText(Text(TextId::kMoveManagementNetworkOntoNewVSwitch));
  do {
    progress_->Ask(Text(TextId::kMoveManagementNetworkNow));
    SetFooter(kF11CancelFooter);
    if (!waitForConfirmation(*this, Key::kF11)) return 0;
    SetFooter("");
  } while (!Restore());
  return 1;
}

bool SafeModeNetworkDialog::Restore() try {
  return Move(*readManagementInterface());
} catch (const HostCtl::Lib::HostCtlException& e) {
  logError("%s", e.what());
  showFailure(*this, e.what());
  return false;
}

bool SafeModeNetworkDialog::Move(HostCtl::Network::TarnNic& nic) {
  const SafeMode::Plan plan = planSafeMode(readBefore(nic));
  const std::string& on = plan.to.switchName;
  announceOperation("evb.user.kiva.standard.switch.restored", "Restoring standard switch " + on);
  std::string trouble;
  const auto show = [this](const std::string& step) { progress_->Begin(plainText(step)); };
  if (!moveManagementNetwork(nic, plan, show, trouble)) return showFailure(*this, trouble), false;
  progress_->End();
  HmxCmdRefresh();
  showSuccess(*this,
              plainText("Moved " + nic.GetInterfaceName() + " to " + plan.to.name + " on " + on));
  return true;
}

}  // namespace Kiva
