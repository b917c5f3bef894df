// SPDX-License-Identifier: MIT
#include "system/login_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "core/screen.h"
#include "core/session.h"
#include "core/terminal.h"
#include "system/authentication.h"
#include "system/change_password_dialog.h"
#include "system/host_name.h"
#include "system/keyboard_dialog.h"
#include "system/login_state.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

// The stray ">" in the first colour tag is part of the look: the key stays in the footer's own
// colour.
constexpr const char* kPinFooter =
    "{align:left}{color:black>}<F3>{/color} {color:dark-grey}Switch PIN/Password "
    "Login{/color}{/align}";

std::string keyboardLabel() {
  return formatted("Configured Keyboard (%s)", configuredKeyboardLayout().c_str());
}

}  // namespace

LoginDialog::LoginDialog(Frame& owner)
    : Dialog(owner, 60, 13, 6), mode_(HasSmartCardUserId() ? Mode::Pin : Mode::Password) {
  Window& content = *Content();
  items_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
}

void LoginDialog::LayOut() {
  const bool pin = mode_ == Mode::Pin;
  SetTitle(Text(TextId::kAuthenticationRequired));
  SetText(
      withHostName(Text(pin ? TextId::kEnterSmartCardPin : TextId::kEnterLoginNameAndPassword)));
  SetFooter(pin ? std::string(kPinFooter) + kOkCancelFooter : kOkCancelFooter);
  items_->Clear();
  AddKeyboardLabel();
  name_ = &items_->Append(std::make_unique<InputItem>(
      Text(pin ? TextId::kLoginIdLabel : TextId::kLoginNameLabel), kAccountFieldWidth));
  name_->SetValue(pin ? session().smartCardUserId : "root");
  secret_ = &items_->Append(std::make_unique<InputItem>(
      Text(pin ? TextId::kPinLabel : TextId::kPasswordLabel), kAccountFieldWidth, Masking::kStars));
  items_->Focus(*name_);
}

void LoginDialog::AddKeyboardLabel() {
  keyboard_ = nullptr;
  if (!terminal().onLocalConsole) return;
  keyboard_ = &items_->Append(std::make_unique<LabelItem>(keyboardLabel(), Selectable::Yes));
}

int LoginDialog::Foreground() {
  LayOut();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape || Handle(key)) {
      secret_->SetValue("");
      return key != Key::kEscape;
    }
  }
}

bool LoginDialog::Handle(int key) {
  if (key == Key::kEnter) return Enter();
  if (key == Key::kF3) {
    mode_ = mode_ == Mode::Pin ? Mode::Password : Mode::Pin;
    LayOut();
  } else if (key == Key::kUp) {
    items_->MoveUp();
  } else if (key == Key::kDown) {
    items_->MoveDown();
  } else if (key == Key::kTab) {
    MoveForward();
  } else if (TakesKey(key)) {
    items_->Focused()->PressKey(key);
    items_->Draw();
  }
  return false;
}

bool LoginDialog::TakesKey(int key) {
  const Item* focused = items_->Focused();
  if (focused == keyboard_) return false;
  return Key::isEditing(key) || (focused == secret_ ? Key::isByte(key) : Key::isPrintable(key));
}

void LoginDialog::MoveForward() {
  if (items_->Focused() != secret_)
    items_->MoveDown();
  else
    items_->Focus(keyboard_ ? static_cast<Item&>(*keyboard_) : *name_);
}

bool LoginDialog::Enter() {
  const Item* focused = items_->Focused();
  if (focused == secret_) return Authenticate();
  if (focused == keyboard_)
    ChooseKeyboard();
  else
    items_->MoveDown();
  return false;
}

void LoginDialog::ChooseKeyboard() {
  KeyboardDialog dialog(*this);
  runWindow(dialog);
  keyboard_->SetLabel(keyboardLabel());
  items_->Draw();
}

bool LoginDialog::Authenticate() {
  updateScreen();
  switch (authenticate(name_->Value(), Secret(secret_->Value()))) {
    case Authentication::Accepted:
      return true;
    case Authentication::NoPermission:
      Refuse(TextId::kUserHasNoPermission);
      break;
    case Authentication::PasswordExpired:
      Refuse(TextId::kPasswordHasExpired);
      ChangeExpiredPassword();
      break;
    case Authentication::Failed:
      Refuse(TextId::kInvalidLoginOrPassword);
      break;
  }
  return false;
}

void LoginDialog::Refuse(TextId reason) {
  showMessage(*this, TextId::kAuthenticationFailed, Text(reason));
  secret_->SetValue("");
  items_->Focus(*secret_);
}

void LoginDialog::ChangeExpiredPassword() {
  ChangePasswordDialog dialog(*this);
  runWindow(dialog);
}

LoginDisabledDialog::LoginDisabledDialog(Frame& owner) : Dialog(owner, 60, 9, 6) {}

int LoginDisabledDialog::Foreground() {
  SetTitle(Text(TextId::kAuthenticationDenied));
  SetText(withHostName(Text(TextId::kDirectConsoleAccessDisabled)));
  SetFooter(kOkFooter);
  waitForConfirmation(*this, Key::kEnter);
  return 0;
}

}  // namespace Kiva
