// SPDX-License-Identifier: MIT
#include "system/keyboard_dialog.h"

#include "core/keys.h"
#include "core/log.h"
#include "core/screen.h"
#include "hostctl/lib/exception.h"
#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;

KeyboardDialog::KeyboardDialog(Frame& owner)
    : ListDialog(owner, {.title = TextId::kConfigureKeyboard,
                         .text = TextId::kIfDifficultyUsingKeyboard,
                         .width = 72,
                         .height = 22,
                         .topHeight = 6,
                         .footer = std::string(kSelect) + "  " + kToggle + kOkCancelFooter}) {}

int KeyboardDialog::Foreground() try {
  return ListDialog::Foreground() && Apply();
} catch (const HostCtlException& error) {
  logError("%s", error.what());
  showMessage(*this, TextId::kOperationFailed, plainText(error.what()));
  return 0;
}

void KeyboardDialog::AddRows() {
  names_ = system_.GetKeyboardLayouts();
  const std::string configured = system_.GetKeyboardLayout();
  for (std::size_t i = 0; i < names_.size(); ++i) {
    const bool mark = marked_ < 0 && names_[i] == configured;
    if (mark) marked_ = static_cast<int>(i);
    radios_.push_back(&Rows().Append(std::make_unique<RadioItem>(plainText(names_[i]), mark)));
  }
}

void KeyboardDialog::PressKey(int key) {
  if (key != Key::kSpace) return;
  if (marked_ >= 0) radios_[static_cast<std::size_t>(marked_)]->SetSelected(false);
  marked_ = Rows().FocusedIndex();
  radios_[static_cast<std::size_t>(marked_)]->SetSelected(true);
  Rows().Draw();
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
