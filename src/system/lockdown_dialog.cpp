// SPDX-License-Identifier: MIT
#include "system/lockdown_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "system/lockdown.h"
#include "ui/footer.h"

namespace Kiva {

LockdownDialog::LockdownDialog(Frame& owner)
    : Dialog(owner, 60, 11, 6), enabled_(isLockdownEnabled()) {
  Window& content = *Content();
  items_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
}

void LockdownDialog::LayOut() {
  SetTitle(Text(TextId::kConfigureLockdownModeTitle));
  SetText(Text(TextId::kLockdownModePreventsLogin));
  SetFooter(std::string(kToggle) + kOkCancelFooter);
  enable_ =
      &items_->Append(std::make_unique<CheckItem>(Text(TextId::kEnableLockdownMode), enabled_));
  items_->FocusStart();
}

int LockdownDialog::Foreground() {
  LayOut();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (key == Key::kEnter) return Apply(), 1;
    Handle(key);
  }
}

void LockdownDialog::Handle(int key) {
  if (key == Key::kUp) {
    items_->MoveUp();
  } else if (key == Key::kDown) {
    items_->MoveDown();
  } else if (key == Key::kSpace) {
    enable_->Toggle();
    items_->Draw();
  }
}

void LockdownDialog::Apply() {
  const bool wanted = enable_->IsChecked();
  if (wanted == enabled_) return;
  if (switchLockdown(wanted ? Lockdown::On : Lockdown::Off)) enabled_ = wanted;
}

}  // namespace Kiva
