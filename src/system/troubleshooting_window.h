// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "system/shell_services.h"
#include "ui/menu_window.h"

namespace Kiva {

/// Where an operator lets others at the host's shell, sets time-outs and restarts the management
/// agents. It asks the host once what runs; from then on it knows by what it has switched.
class TroubleShootingWindow : public MenuWindow<TroubleShootingWindow> {
 public:
  explicit TroubleShootingWindow(Frame& owner);

 private:
  static const std::vector<Entry>& Entries();

  TextId ShellLabel();
  TextId SshLabel();
  std::string ShellText();
  std::string SshText();
  /// The selected entry's description above what holds now.
  std::string Described(TextId state);

  void ToggleShell();
  void ToggleSsh();
  void Toggle(const ShellService& service, bool& running);
  void EnterShellTimeouts();
  void EnterKivaTimeout();
  void EnterRestartAgents();

  bool shellRunning_;
  bool sshRunning_;
};

}  // namespace Kiva
