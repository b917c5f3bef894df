// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "console/log_table.h"
#include "ui/menu_window.h"

namespace Kiva {

/// The System Customization menu of a logged-in operator: tasks on the left, the selected task's
/// state and description on the right. It changes nothing itself; Escape logs the operator out.
class GeneralWindow : public MenuWindow<GeneralWindow> {
 public:
  explicit GeneralWindow(Frame& owner);

  void Notification() override { RepaintRight(); }

 private:
  static const std::vector<Entry>& Entries();

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
  /// The selected entry's description below what holds now.
  std::string Described(const std::string& state);

  void EnterPassword();
  void EnterLockdown();
  void EnterNetwork();
  void EnterRestartNetwork();
  void EnterTestNetwork();
  void EnterNetworkRestore();
  void EnterKeyboard();
  void EnterTroubleshooting();
  void EnterReset();

  void Leave() override;
  void HandleOther(int key) override;
  void TurnPage(int key);
  void OpenLog(int digit);

  bool lockdownEnabled_;
  bool lockdownSelectable_;
  bool networkUsable_;
  std::vector<std::string> supportPages_;
  std::size_t supportPage_ = 0;
  LogFlags availableLogs_{};
};

}  // namespace Kiva
