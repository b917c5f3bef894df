// SPDX-License-Identifier: MIT
#include "system/going_down_dialog.h"

#include "core/key_wait.h"
#include "core/screen.h"
#include "system/audit_events.h"

namespace Kiva {

GoingDownDialog::GoingDownDialog(Frame& owner, const Way& way, VmStop machines)
    : Dialog(owner, 70, 10, 6), way_(way), machines_(machines) {}

int GoingDownDialog::Foreground() {
  SetTitle(Text(way_.title));
  SetText(Text(way_.text));
  updateScreen();
  PowerOffVms(machines_);
  if (RunShellCommand(way_.command) == kNotRun) return 0;
  for (;;) getKey(*this);
}

ShutdownConfirmDialog::ShutdownConfirmDialog(Frame& owner, VmStop machines)
    : GoingDownDialog(owner, {TextId::kShutDownHost, TextId::kShutdownInProgress, "poweroff"},
                      machines) {}

RebootConfirmDialog::RebootConfirmDialog(Frame& owner, VmStop machines)
    : GoingDownDialog(owner, {TextId::kRestartHost, TextId::kRestartInProgress, "reboot"},
                      machines) {}

void shutDownHost(Frame& owner, VmStop machines) {
  announceOperation("evb.user.kiva.shutdown.host", "Shutting down host");
  ShutdownConfirmDialog dialog(owner, machines);
  runWindow(dialog);
}

void rebootHost(Frame& owner, VmStop machines) {
  announceOperation("evb.user.kiva.reboot.host", "Rebooting host");
  RebootConfirmDialog dialog(owner, machines);
  runWindow(dialog);
}

}  // namespace Kiva
