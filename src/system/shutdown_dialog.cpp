// SPDX-License-Identifier: MIT
#include "system/shutdown_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "system/going_down_dialog.h"

namespace Kiva {

namespace {

constexpr const char* kFooter =
    "{color:black}<F2>{/color} {color:dark-grey}Shut Down{/color}  "
    "{color:black}<F11>{/color} {color:dark-grey}Restart{/color}"
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

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
  const VmStop machines = forced_.IsChecked() ? VmStop::Terminate : VmStop::Graceful;
  if (key == Key::kF2) shutDownHost(*this, machines);
  if (key == Key::kF11) rebootHost(*this, machines);
}

void ShutdownDialog::DrawChoice() {
  forced_.Draw(*choice_);
}

}  // namespace Kiva
