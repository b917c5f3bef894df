// SPDX-License-Identifier: MIT
#include "network/restore/outcome.h"

#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

void showOutcome(Frame& owner, TextId title, const std::string& body) {
  NotificationDialog dialog(owner, catalogueText(title), body);
  runWindow(dialog);
}

void showSuccess(Frame& owner, const std::string& body) {
  showOutcome(owner, TextId::kOperationSucceeded, body);
}

void showFailure(Frame& owner, const std::string& cause) {
  const std::string first = cause.empty() ? "" : plainText(cause) + "\n\n";
  showOutcome(owner, TextId::kOperationFailed, first + catalogueText(TextId::kPleaseCheckSyslog));
}

std::string failureOf(const std::string& step, const std::string& cause) {
  return step + " failed" + (cause.empty() ? "" : ": " + cause);
}

}  // namespace Kiva
