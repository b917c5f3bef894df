// SPDX-License-Identifier: MIT
#include "network/restore/restore_network_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "network/restore/do_restore_network_dialog.h"
#include "system/audit_events.h"

namespace Kiva {

namespace {

constexpr const char* kFooter =
    "{color:black}<F11>{/color} {color:dark-grey}Yes, Reset{/color}"
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

void announceRestored() {
  announceOperation("evb.user.kiva.factory.network.restored", "Restoring factory network settings");
}

}  // namespace

RestoreNetworkDialog::RestoreNetworkDialog(Frame& owner) : Dialog(owner, 60, 12, 6) {
  Window& content = *Content();
  question_ = &content.Make<TextArea>(Rect{0, 0, content.Width(), content.Height()}, kParentColor);
}

int RestoreNetworkDialog::Foreground() {
  SetTitle(Text(TextId::kRestoreNetworkFactorySettings));
  SetText(Text(TextId::kWillResetHostNetwork));
  question_->SetText(Text(TextId::kResetHostNetworkNow));
  SetFooter(kFooter);
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (key != Key::kF11) continue;
    Restore();
    return 1;
  }
}

// Whoever walks away from the result has restored the network all the same.
void RestoreNetworkDialog::Restore() try {
  DoRestoreNetworkDialog dialog(*this);
  runWindow(dialog);
  announceRestored();
} catch (const KivaTimeout&) {
  announceRestored();
  throw;
}

}  // namespace Kiva
