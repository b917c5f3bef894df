// SPDX-License-Identifier: MIT
#include "system/restart_agents_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "system/audit_events.h"
#include "system/live_core.h"
#include "tarnctl/util/exec.h"
#include "ui/footer.h"

namespace Kiva {

namespace {

constexpr int kSteps = 2;

}  // namespace

RestartAgentsDialog::RestartAgentsDialog(Frame& owner) : Dialog(owner, 70, 17, 9) {
  Window& content = *Content();
  progress_ = &content.Make<ProgressArea>(Rect{0, 0, content.Width(), kSteps});
  items_ = &content.Make<ItemList>(Rect{0, kSteps, content.Width(), 1});
  collect_ = &items_->Append(
      std::make_unique<CheckItem>(Text(TextId::kCollectTroubleshootingInformation)));
}

int RestartAgentsDialog::Foreground() {
  SetTitle(Text(TextId::kRestartManagementAgentsConfirm));
  SetText(Text(TextId::kWarningRestartingAgentsDisconnects));
  SetFooter(kF11CancelFooter);
  progress_->SetText(Text(TextId::kRestartManagementAgentsNow));
  items_->FocusStart();
  if (!Confirm()) return 0;
  Restart();
  waitForEnter(*this);
  return 1;
}

bool RestartAgentsDialog::Confirm() {
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kF11 || key == Key::kEscape) return key == Key::kF11;
    if (key != Key::kSpace) continue;
    collect_->Toggle();
    items_->Draw();
  }
}

void RestartAgentsDialog::Restart() {
  const bool collect = collect_->IsChecked();
  items_->Clear();
  items_->Draw();
  SetFooter("");
  announceOperation("evb.user.kiva.restarting.hostagents", "Restarting host agents");
  if (collect) startLiveCore();
  Step(TextId::kStoppingManagementAgents, "/bin/sh /sbin/services.sh stop");
  Step(TextId::kStartingManagementAgents, "/bin/sh /sbin/services.sh start");
  progress_->End();
  SetFooter(kOkFooter);
  discardTypeAhead();
}

// The agents are started whatever the stop came to.
void RestartAgentsDialog::Step(TextId text, const std::string& line) try {
  progress_->Begin(Text(text));
  TarnCtl::Util::TarnCtl_Exec(line, false, true, false);
} catch (const HostCtl::Lib::HostCtlException& exception) {
  logError("%s", exception.what());
}

}  // namespace Kiva
