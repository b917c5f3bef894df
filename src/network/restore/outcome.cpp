// SPDX-License-Identifier: MIT
#include "network/restore/outcome.h"

#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

void showFailure(Frame& owner, const std::string& cause) {
  const std::string first = cause.empty() ? "" : plainText(cause) + "\n\n";
  showMessage(owner, TextId::kOperationFailed, first + catalogueText(TextId::kPleaseCheckSyslog));
}

}  // namespace Kiva
