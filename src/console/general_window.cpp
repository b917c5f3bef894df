// SPDX-License-Identifier: MIT
#include "console/general_window.h"

#include "console/log_viewer.h"
#include "console/support_pages.h"
#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "network/management_interface.h"
#include "system/change_password_dialog.h"
#include "system/keyboard_dialog.h"
#include "system/lockdown.h"
#include "system/lockdown_dialog.h"
#include "system/restore_dialog.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr const char* kLogOut =
    "{align:right}{color:white}<Esc>{/color}{color:light-grey} Log Out{/color}{/align}";

bool managementInterfaceUsable() {
  if (findManagementInterface()) return true;
  logError("Could not get a suitable management interface");
  return false;
}

}  // namespace

GeneralWindow::GeneralWindow(Frame& owner)
    : RootWindow(owner),
      lockdownEnabled_(isLockdownEnabled()),
      lockdownSelectable_(lockdownEnabled_ || isLockdownPossible()),
      networkUsable_(managementInterfaceUsable()),
      supportPages_(supportPages()) {
  AddEntries();
}

void GeneralWindow::AddEntries() {
  for (const Entry& entry : Entries()) {
    if (entry.listed && !(this->*entry.listed)()) continue;
    const bool selectable = !entry.selectable || (this->*entry.selectable)();
    Menu().Append(std::make_unique<LabelItem>(Text(entry.title),
                                              selectable ? Selectable::Yes : Selectable::No));
    entries_.push_back(&entry);
  }
}

const GeneralWindow::Entry& GeneralWindow::Selected() {
  return *entries_[static_cast<std::size_t>(Menu().FocusedIndex())];
}

int GeneralWindow::Foreground() {
  Menu().FocusStart();
  Show();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 1;
    Handle(key);
  }
}

void GeneralWindow::Handle(int key) {
  if (key == Key::kUp || key == Key::kDown)
    Move(key);
  else if (key == Key::kEnter)
    Enter();
  else if (IsSelected(TextId::kViewSupportInformation))
    TurnPage(key);
  else if (IsSelected(TextId::kViewSystemLogs) && key >= '0' && key <= '9')
    OpenLog(key - '0');
}

void GeneralWindow::Enter() {
  if (Selected().enter) (this->*Selected().enter)();
}

void GeneralWindow::Move(int key) {
  if (IsSelected(TextId::kViewSupportInformation)) supportPage_ = 0;
  if (key == Key::kDown)
    Menu().MoveDown();
  else
    Menu().MoveUp();
  RepaintRight();
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

void GeneralWindow::EnterRestartNetwork() {
  if (managementInterfaceUsable()) return;
  showMessage(*this, TextId::kRestartManagementNetworkError,
              Text(TextId::kManagementNetworkInterfaceNotFound));
}

void GeneralWindow::EnterKeyboard() {
  KeyboardDialog dialog(*this);
  runWindow(dialog);
  Show();
}

void GeneralWindow::EnterReset() {
  RestoreDialog dialog(*this);
  runWindow(dialog);
}

void GeneralWindow::Repaint() {
  SetLeftTitle(Text(TextId::kSystemCustomization));
  Menu().Draw();
  SetLeftFooter(kSelectFooter);
  RepaintRight();
}

void GeneralWindow::RepaintRight() {
  const Entry& entry = Selected();
  SetRightTitle(Text(entry.title));
  SetRightText(entry.text ? (this->*entry.text)() : Description());
  SetRightFooter(std::string(entry.footer) + kLogOut);
}

}  // namespace Kiva
