// SPDX-License-Identifier: MIT
#include "system/lockdown_dialog.h"

#include "core/keys.h"
#include "system/lockdown.h"

namespace Kiva {

LockdownDialog::LockdownDialog(Frame& owner)
    : ListDialog(owner, {.title = TextId::kConfigureLockdownModeTitle,
                         .text = TextId::kLockdownModePreventsLogin,
                         .width = 60,
                         .height = 11,
                         .topHeight = 6,
                         .footer = std::string(kToggle) + kOkCancelFooter}),
      enabled_(isLockdownEnabled()),
      enable_(
          Rows().Append(std::make_unique<CheckItem>(Text(TextId::kEnableLockdownMode), enabled_))) {
}

void LockdownDialog::PressKey(int key) {
  if (key != Key::kSpace) return;
  enable_.Toggle();
  Rows().Draw();
}

bool LockdownDialog::Accept() {
  const bool wanted = enable_.IsChecked();
  if (wanted != enabled_) switchLockdown(wanted ? Lockdown::On : Lockdown::Off);
  return true;
}

}  // namespace Kiva
