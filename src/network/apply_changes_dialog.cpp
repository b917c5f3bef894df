// SPDX-License-Identifier: MIT
#include "network/apply_changes_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"

namespace Kiva {

namespace {

constexpr const char* kFooter =
    "{color:black}<Y>{/color} {color:dark-grey}Yes{/color}  "
    "{color:black}<N>{/color} {color:dark-grey}No{/color}"
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

}  // namespace

ApplyChangesDialog::ApplyChangesDialog(Frame& owner, bool ipv6Toggled) : Dialog(owner, 70, 15, 9) {
  Window& content = *Content();
  content.Make<TextArea>(Rect{0, 0, content.Width(), 1}, kParentColor,
                         Text(ipv6Toggled ? TextId::kApplyChangesAndRebootHost
                                          : TextId::kApplyChangesAndRestartNetwork));
}

int ApplyChangesDialog::Foreground() {
  SetTitle(Text(TextId::kConfigureManagementNetworkConfirm));
  SetText(Text(TextId::kYouHaveMadeNetworkChanges));
  SetFooter(kFooter);
  answer_ = Ask();
  return answer_ != Answer::Cancel;
}

ApplyChangesDialog::Answer ApplyChangesDialog::Ask() {
  for (;;) {
    const int key = getKey(*this);
    if (key == 'y' || key == 'Y') return Answer::Yes;
    if (key == 'n' || key == 'N') return Answer::No;
    if (key == Key::kEscape) return Answer::Cancel;
  }
}

}  // namespace Kiva
