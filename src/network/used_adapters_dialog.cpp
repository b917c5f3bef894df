// SPDX-License-Identifier: MIT
#include "network/used_adapters_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "ui/footer.h"

namespace Kiva {

UsedAdaptersDialog::UsedAdaptersDialog(Frame& owner) : Dialog(owner, 70, 11, 6) {
  Window& content = *Content();
  content.Make<TextArea>(Rect{0, 0, content.Width(), 1}, kParentColor,
                         Text(TextId::kRemoveAdaptersFromConnections));
}

int UsedAdaptersDialog::Foreground() {
  SetTitle(Text(TextId::kNetworkAdaptersWarning));
  SetText(Text(TextId::kSelectedAdaptersAreUsed));
  SetFooter(kOkCancelFooter);
  return waitForConfirmation(*this, Key::kEnter);
}

}  // namespace Kiva
