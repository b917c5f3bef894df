// SPDX-License-Identifier: MIT
#include "console/general_window.h"

#include "console/log_viewer.h"
#include "console/support_pages.h"
#include "core/keys.h"
#include "network/management_interface.h"
#include "network/network_window.h"
#include "network/restart_network_dialog.h"
#include "network/restore/network_restore_window.h"
#include "network/test_dialog.h"
#include "system/change_password_dialog.h"
#include "system/keyboard_dialog.h"
#include "system/lockdown.h"
#include "system/lockdown_dialog.h"
#include "system/restore_dialog.h"
#include "system/troubleshooting_window.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr const char* kLogOut =
    "{align:right}{color:white}<Esc>{/color}{color:light-grey} Log Out{/color}{/align}";

}  // namespace

GeneralWindow::GeneralWindow(Frame& owner)
    : MenuWindow(
          owner,
          {.title = TextId::kSystemCustomization, .leftFooter = kSelectFooter, .wayOut = kLogOut}),
      lockdownEnabled_(isLockdownEnabled()),
      lockdownSelectable_(lockdownEnabled_ || isLockdownPossible()),
      networkUsable_(requireManagementInterface() != nullptr),
      supportPages_(supportPages()) {
  AddEntries(Entries());
}

void GeneralWindow::HandleOther(int key) {
  if (IsSelected(TextId::kViewSupportInformation))
    TurnPage(key);
  else if (IsSelected(TextId::kViewSystemLogs) && key >= '0' && key <= '9')
    OpenLog(key - '0');
}

void GeneralWindow::Leave() {
  if (IsSelected(TextId::kViewSupportInformation)) supportPage_ = 0;
}

void GeneralWindow::TurnPage(int key) {
  if (key == Key::kPageDown && supportPage_ + 1 < supportPages_.size())
    ++supportPage_;
  else if (key == Key::kPageUp && supportPage_ > 0)
    --supportPage_;
  else
    return;
  RepaintRight();
}

void GeneralWindow::OpenLog(int digit) {
  const auto row = logForDigit(digit, availableLogs_);
  if (row) viewLog(*this, kSystemLogs[*row].file);
}

void GeneralWindow::EnterPassword() {
  ChangePasswordDialog dialog(*this);
  runWindow(dialog);
  Show();
}

void GeneralWindow::EnterLockdown() {
  LockdownDialog dialog(*this);
  if (runWindow(dialog)) {
    updateScreen();
    lockdownEnabled_ = isLockdownEnabled();
  }
  Show();
}

void GeneralWindow::EnterNetwork() {
  NetworkWindow window(*this);
  runWindow(window);
  Show();
}

// An interface that was there when the menu opened may be gone.
void GeneralWindow::EnterRestartNetwork() {
  const auto interface = requireManagementInterface();
  if (!interface)
    return showMessage(*this, TextId::kRestartManagementNetworkError,
                       Text(TextId::kManagementNetworkInterfaceNotFound));
  RestartNetworkDialog dialog(*this, *interface);
  runWindow(dialog);
}

void GeneralWindow::EnterTestNetwork() {
  const auto interface = requireManagementInterface();
  TestDialog dialog(*this, interface ? interface->GetInterfaceName() : "");
  runWindow(dialog);
}

void GeneralWindow::EnterNetworkRestore() {
  NetworkRestoreWindow window(*this);
  runWindow(window);
  networkUsable_ = findManagementInterface() != nullptr;
  UpdateSelectable();
  Show();
}

void GeneralWindow::EnterKeyboard() {
  KeyboardDialog dialog(*this);
  runWindow(dialog);
  Show();
}

void GeneralWindow::EnterTroubleshooting() {
  TroubleShootingWindow window(*this);
  runWindow(window);
  Show();
}

void GeneralWindow::EnterReset() {
  RestoreDialog dialog(*this);
  runWindow(dialog);
}

}  // namespace Kiva
