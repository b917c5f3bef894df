// SPDX-License-Identifier: MIT
#include "console/general_window.h"
#include "console/network_summary.h"
#include "console/support_pages.h"
#include "core/log.h"
#include "core/session.h"
#include "system/keyboard_dialog.h"

namespace Kiva {

std::string GeneralWindow::Described(const std::string& state) {
  return "{color:white}" + state + "{/color}\n\n" + Description();
}

std::string GeneralWindow::PasswordText() {
  if (!session().emptyPassword) return Described(Text(TextId::kSet));
  return Described(std::string(Text(TextId::kNotSet)) + "\n" +
                   Text(TextId::kChangeDefaultPassword));
}

std::string GeneralWindow::LockdownText() {
  return Described(Text(lockdownEnabled_ ? TextId::kEnabled : TextId::kDisabled));
}

std::string GeneralWindow::NetworkText() {
  return Described(networkSummary(RightPane().Width()));
}

std::string GeneralWindow::KeyboardText() {
  return Described(configuredKeyboardLayout());
}

std::string GeneralWindow::LogsText() {
  availableLogs_ = availableLogs();
  std::string text = std::string(Text(TextId::kPressKeyToViewLog)) + "\n\n";
  int number = 0;
  for (std::size_t row = 0; row < kSystemLogs.size(); ++row)
    if (availableLogs_[row])
      text += formatted("{color:white}<%d> {color:light-grey}%s{/color}\n", ++number,
                        kSystemLogs[row].title);
  return text;
}

std::string GeneralWindow::SupportText() {
  return supportPageText(supportPages_, supportPage_, RightPane().Width(), RightPane().Height());
}

}  // namespace Kiva
