// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "console/log_table.h"
#include "ui/root_window.h"

namespace Kiva {

/// The System Customization menu of a logged-in operator: tasks on the left, the selected task's
/// state and description on the right. It changes nothing itself; Escape logs the operator out.
class GeneralWindow : public RootWindow {
 public:
  explicit GeneralWindow(Frame& owner);

  /// 1 when the operator logs out.
  int Foreground() override;
  void Notification() override { RepaintRight(); }
  void Repaint() override;

 private:
  /// One row of the menu: everything that its keys, its pane and its footer need.
  struct Entry {
    TextId title;
    TextId description = TextId::kEmpty;
    const char* footer = "";
    /// Null: always.
    bool (GeneralWindow::*listed)() = nullptr;
    bool (GeneralWindow::*selectable)() = nullptr;
    /// The pane's text; null: the description alone.
    std::string (GeneralWindow::*text)() = nullptr;
    /// Enter; null: nothing.
    void (GeneralWindow::*enter)() = nullptr;
  };
  static const std::vector<Entry>& Entries();
  void AddEntries();
  const Entry& Selected();
  bool IsSelected(TextId title) { return Selected().title == title; }

  bool Never() { return false; }
  bool OnLocalConsole();
  bool LockdownSelectable() { return lockdownSelectable_; }
  bool NetworkUsable() { return networkUsable_; }
  bool ResetSelectable();

  std::string PasswordText();
  std::string LockdownText();
  std::string NetworkText();
  std::string KeyboardText();
  std::string LogsText();
  std::string SupportText();
  std::string Description();
  /// The selected entry's description below what holds now.
  std::string Described(const std::string& state);

  void EnterPassword();
  void EnterLockdown();
  void EnterRestartNetwork();
  void EnterKeyboard();
  void EnterReset();

  void Handle(int key);
  void Enter();
  void Move(int key);
  void TurnPage(int key);
  void OpenLog(int digit);
  void RepaintRight();

  std::vector<const Entry*> entries_;
  bool lockdownEnabled_;
  bool lockdownSelectable_;
  bool networkUsable_;
  std::vector<std::string> supportPages_;
  std::size_t supportPage_ = 0;
  LogFlags availableLogs_{};
};

}  // namespace Kiva
