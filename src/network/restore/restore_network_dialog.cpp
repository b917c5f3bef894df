// SPDX-License-Identifier: MIT
#include "network/restore/restore_network_dialog.h"

#include <cstdlib>
#include <utility>

#include "core/key_wait.h"
#include "core/keys.h"
#include "network/restore/do_restore_network_dialog.h"
#include "system/audit_events.h"

namespace Kiva {

namespace {

constexpr const char* kFooter =
    "{color:black}<F11>{/color} {color:dark-grey}Yes, Reset{/color}"
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

bool begun = false;

void announceRestored() {
  if (!std::exchange(begun, false)) return;
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
  if (!waitForConfirmation(*this, Key::kF11)) return 0;
  Restore();
  return 1;
}

// Whoever walks away from the result has restored the network all the same, even where the process
// ends over it. Whoever declines at the last question has the attempt noted.
void RestoreNetworkDialog::Restore() try {
  [[maybe_unused]] static const int registered = std::atexit(announceRestored);
  DoRestoreNetworkDialog dialog(*this, begun);
  runWindow(dialog);
  begun = true;
  announceRestored();
} catch (const KivaTimeout&) {
  announceRestored();
  throw;
}

}  // namespace Kiva
