// SPDX-License-Identifier: MIT
#include "system/shutdown_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "system/audit_events.h"
#include "system/going_down_dialog.h"

namespace Kiva {

namespace {

constexpr const char* kFooter =
    "{color:black}<F2>{/color} {color:dark-grey}Shut Down{/color}  "
    "{color:black}<F11>{/color} {color:dark-grey}Restart{/color}"
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

template <typename GoingDown>
void run(Frame& owner, VmStop machines) {
  GoingDown dialog(owner, machines);
  runWindow(dialog);
}

constexpr struct {
  int key;
  const char* event;
  const char* message;
  void (*run)(Frame& owner, VmStop machines);
} kWays[] = {
    {Key::kF2, "evb.user.kiva.shutdown.host", "Shutting down host", run<ShutdownConfirmDialog>},
    {Key::kF11, "evb.user.kiva.reboot.host", "Rebooting host", run<RebootConfirmDialog>},
};

}  // namespace

ShutdownDialog::ShutdownDialog(Frame& owner)
    : Dialog(owner, 60, 19, 13), forced_(Text(TextId::kForcefullyTerminateVms)) {
  Window& content = *Content();
  choice_ = &content.Make<TextArea>(Rect{0, 0, content.Width(), 1}, forced_.ForegroundColor());
}

int ShutdownDialog::Foreground() {
  SetTitle(Text(TextId::kShutDownRestart));
  SetText(Text(TextId::kRemoteSoftwareRecommendedToShutDown));
  SetFooter(kFooter);
  DrawChoice();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    Handle(key);
  }
}

void ShutdownDialog::Handle(int key) {
  if (key == Key::kSpace) {
    forced_.Toggle();
    DrawChoice();
  }
  for (const auto& way : kWays) {
    if (key != way.key) continue;
    announceOperation(way.event, way.message);
    way.run(*this, forced_.IsChecked() ? VmStop::Terminate : VmStop::Graceful);
  }
}

void ShutdownDialog::DrawChoice() {
  forced_.Draw(*choice_);
}

}  // namespace Kiva
