// SPDX-License-Identifier: MIT
#include "system/keyboard_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "core/screen.h"
#include "hostctl/lib/exception.h"
#include "ui/footer.h"
#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;

KeyboardDialog::KeyboardDialog(Frame& owner) : Dialog(owner, 72, 22, 6) {
  Window& content = *Content();
  items_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
}

int KeyboardDialog::Foreground() try {
  SetTitle(Text(TextId::kConfigureKeyboard));
  SetText(Text(TextId::kIfDifficultyUsingKeyboard));
  SetFooter(std::string(kSelect) + "  " + kToggle + kOkCancelFooter);
  ListLayouts();
  return Choose() == Key::kEnter && Apply();
} catch (const HostCtlException& error) {
  logError("%s", error.what());
  showMessage(*this, TextId::kOperationFailed, plainText(error.what()));
  return 0;
}

void KeyboardDialog::ListLayouts() {
  names_ = system_.GetKeyboardLayouts();
  const std::string configured = system_.GetKeyboardLayout();
  for (std::size_t i = 0; i < names_.size(); ++i) {
    const bool mark = marked_ < 0 && names_[i] == configured;
    if (mark) marked_ = static_cast<int>(i);
    radios_.push_back(&items_->Append(std::make_unique<RadioItem>(plainText(names_[i]), mark)));
  }
  items_->FocusStart();
}

int KeyboardDialog::Choose() {
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEnter || key == Key::kEscape) return key;
    if (key == Key::kUp) items_->MoveUp();
    if (key == Key::kDown) items_->MoveDown();
    if (key == Key::kSpace) MarkFocused();
  }
}

void KeyboardDialog::MarkFocused() {
  if (!items_->Focused()) return;
  if (marked_ >= 0) radios_[static_cast<std::size_t>(marked_)]->SetSelected(false);
  marked_ = items_->FocusedIndex();
  radios_[static_cast<std::size_t>(marked_)]->SetSelected(true);
  items_->Draw();
}

bool KeyboardDialog::Apply() {
  if (marked_ < 0) return false;
  const std::string& name = names_[static_cast<std::size_t>(marked_)];
  updateScreen();
  system_.LoadKeyboardMappings(name);
  system_.SetKeyboardLayout(name);
  logInfo("Keyboard Layout changed to %s", name.c_str());
  return true;
}

std::string configuredKeyboardLayout() try {
  return plainText(TarnCtl::System::SystemInfoImpl().GetKeyboardLayout());
} catch (const HostCtlException&) {
  return "";
}

}  // namespace Kiva
