// SPDX-License-Identifier: MIT
#include "system/troubleshooting_window.h"

#include "core/screen.h"
#include "system/restart_agents_dialog.h"
#include "system/timeout_dialog.h"
#include "ui/footer.h"

namespace Kiva {

namespace {

constexpr const char* kExit =
    "{align:right}{color:white}<Esc>{/color}{color:light-grey} Exit{/color}{/align}";
constexpr const char* kRestart = "{color:white}<Enter>{/color}{color:light-grey} Restart{/color}";

}  // namespace

const std::vector<TroubleShootingWindow::Entry>& TroubleShootingWindow::Entries() {
  using W = TroubleShootingWindow;
  static const std::vector<Entry> entries{
      {.title = TextId::kHaloShell,
       .description = TextId::kChangeHaloShellState,
       .footer = kChange,
       .label = &W::ShellLabel,
       .text = &W::ShellText,
       .enter = &W::ToggleShell},
      {.title = TextId::kSshSupport,
       .description = TextId::kChangeSshState,
       .footer = kChange,
       .label = &W::SshLabel,
       .text = &W::SshText,
       .enter = &W::ToggleSsh},
      {.title = TextId::kModifyShellTimeouts,
       .description = TextId::kModifyShellTimeoutMinutes,
       .footer = kChange,
       .enter = &W::EnterShellTimeouts},
      {.title = TextId::kModifyKivaIdleTimeout,
       .description = TextId::kModifyKivaIdleMinutes,
       .footer = kChange,
       .enter = &W::EnterKivaTimeout},
      {.title = TextId::kRestartManagementAgents,
       .description = TextId::kManagementAgentsAre,
       .footer = kRestart,
       .enter = &W::EnterRestartAgents},
  };
  return entries;
}

TroubleShootingWindow::TroubleShootingWindow(Frame& owner)
    : MenuWindow(
          owner,
          {.title = TextId::kTroubleshootingModeOptions, .leftFooter = kSelect, .wayOut = kExit}),
      shellRunning_(isRunning(kHaloShellService)),
      sshRunning_(isRunning(kSshService)) {
  AddEntries(Entries());
}

TextId TroubleShootingWindow::ShellLabel() {
  return shellRunning_ ? TextId::kDisableHaloShell : TextId::kEnableHaloShell;
}

TextId TroubleShootingWindow::SshLabel() {
  return sshRunning_ ? TextId::kDisableSsh : TextId::kEnableSsh;
}

std::string TroubleShootingWindow::ShellText() {
  return Described(shellRunning_ ? TextId::kHaloShellIsEnabled : TextId::kHaloShellIsDisabled);
}

std::string TroubleShootingWindow::SshText() {
  return Described(sshRunning_ ? TextId::kSshIsEnabled : TextId::kSshIsDisabled);
}

std::string TroubleShootingWindow::Described(TextId state) {
  return Description() + "\n\n{color:light-grey}" + Text(state) + "{/color}";
}

void TroubleShootingWindow::ToggleShell() {
  Toggle(kHaloShellService, shellRunning_);
}

void TroubleShootingWindow::ToggleSsh() {
  Toggle(kSshService, sshRunning_);
}

// An operator who pressed Enter twice while the host was slow meant one change.
void TroubleShootingWindow::Toggle(const ShellService& service, bool& running) {
  switchService(service, running ? ServiceSwitch::Off : ServiceSwitch::On);
  running = !running;
  Repaint();
  discardTypeAhead();
}

void TroubleShootingWindow::EnterShellTimeouts() {
  ShellTimeoutDialog dialog(*this);
  runWindow(dialog);
}

void TroubleShootingWindow::EnterKivaTimeout() {
  KivaTimeoutDialog dialog(*this);
  runWindow(dialog);
}

void TroubleShootingWindow::EnterRestartAgents() {
  RestartAgentsDialog dialog(*this);
  runWindow(dialog);
}

}  // namespace Kiva
