// SPDX-License-Identifier: MIT
#include "network/restore/running_vms_warning_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"

namespace Kiva {

namespace {

constexpr const char* kFooter =
    "{color:black}<Enter>{/color} {color:dark-grey}Confirm{/color}"
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

}  // namespace

RunningVMsWarningDialog::RunningVMsWarningDialog(Frame& owner) : Dialog(owner, 60, 10, 7) {}

int RunningVMsWarningDialog::Foreground() {
  SetTitle(Text(TextId::kWarningVmsRunning));
  SetText(Text(TextId::kHostHasVmsRunning));
  SetFooter(kFooter);
  return waitForConfirmation(*this, Key::kEnter);
}

}  // namespace Kiva
