// SPDX-License-Identifier: MIT
#include "system/restore_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/screen.h"
#include "system/audit_events.h"
#include "system/host_tools.h"
#include "ui/footer.h"

namespace Kiva {

namespace {

constexpr const char* kRestartFooter =
    "{align:right}{color:black}<Enter>{/color} {color:dark-grey}Restart Host{/color}{/align}";

}  // namespace

RestoreDialog::RestoreDialog(Frame& owner) : Dialog(owner, 60, 12, 7) {
  Window& content = *Content();
  question_ = &content.Make<TextArea>(Rect{0, 0, content.Width(), 1}, kParentColor);
}

int RestoreDialog::Foreground() {
  if (Confirm() && Reset()) Restart();
  return 0;
}

bool RestoreDialog::Confirm() {
  SetTitle(Text(TextId::kResetSystemConfigurationConfirm));
  SetText(Text(TextId::kWarningAllParametersWillBeReverted));
  question_->SetText(Text(TextId::kResetSystemConfigurationNow));
  SetFooter(kF11CancelFooter);
  return waitForConfirmation(*this, Key::kF11);
}

bool RestoreDialog::Reset() {
  announceOperation("evb.user.kiva.restore.factory.defaults", "Restoring factory defaults");
  SetTitle(Text(TextId::kResetSystemConfigurationTitle));
  SetText(Text(TextId::kPleaseWaitDefaultsRestored));
  updateScreen();
  return RunShellCommand("/sbin/firmwareConfig.py --reset-only > /dev/null 2>&1") == 0;
}

void RestoreDialog::Restart() {
  question_->SetText("");
  SetFooter(kRestartFooter);
  SetText(Text(TextId::kDefaultSettingsAreRestored));
  discardTypeAhead();
  waitForEnter(*this, IdleTimeout::Ignored);
  updateScreen();
  if (RunShellCommand("reboot -f") != kNotRun) waitForEnd();
}

}  // namespace Kiva
