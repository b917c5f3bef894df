// SPDX-License-Identifier: MIT
#include "system/change_password_dialog.h"

#include <security/pam_appl.h>

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/screen.h"
#include "core/session.h"
#include "system/pam_change_password.h"
#include "system/pam_login.h"
#include "system/password_change.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr const char* kConfirmFooter =
    "{color:black}<Enter>{/color} {color:dark-grey}Confirm{/color}"
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

}  // namespace

ChangePasswordDialog::ChangePasswordDialog(Frame& owner) : Dialog(owner, 60, 13, 6) {
  Window& content = *Content();
  items_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
}

void ChangePasswordDialog::LayOut() {
  SetTitle(Text(TextId::kConfigurePasswordTitle));
  SetText(Text(TextId::kSettingPasswordPreventsAccess));
  SetFooter(kOkCancelFooter);
  old_ = &AddField(TextId::kOldPasswordLabel);
  new_ = &AddField(TextId::kNewPasswordLabel);
  confirm_ = &AddField(TextId::kConfirmPasswordLabel);
  items_->FocusStart();
}

InputItem& ChangePasswordDialog::AddField(TextId label) {
  return items_->Append(
      std::make_unique<InputItem>(Text(label), kAccountFieldWidth, Masking::kStars));
}

int ChangePasswordDialog::Foreground() {
  LayOut();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (Handle(key)) return 1;
  }
}

// The way up ends at the new password, and Tab goes round between the two that are still to be
// typed: an old password that was found right is not asked again.
ChangePasswordDialog::Action ChangePasswordDialog::ActionFor(int key, int field) {
  using D = ChangePasswordDialog;
  static constexpr struct {
    int key;
    Action actions[3];
  } kRows[] = {{Key::kUp, {nullptr, nullptr, &D::FocusNew}},
               {Key::kDown, {&D::VerifyOld, &D::FocusConfirm, nullptr}},
               {Key::kTab, {&D::VerifyOld, &D::FocusConfirm, &D::FocusNew}},
               {Key::kEnter, {&D::VerifyOld, &D::FocusConfirm, &D::Change}}};
  for (const auto& row : kRows)
    if (row.key == key) return row.actions[field];
  return nullptr;
}

bool ChangePasswordDialog::Handle(int key) {
  if (const Action action = ActionFor(key, items_->FocusedIndex())) return (this->*action)();
  if (Key::isEditing(key) || Key::isByte(key)) {
    items_->Focused()->PressKey(key);
    items_->Draw();
  }
  return false;
}

bool ChangePasswordDialog::VerifyOld() {
  updateScreen();
  const int status = PamLogin(session().user, Secret(old_->Value()));
  if (status == PAM_SUCCESS || status == PAM_NEW_AUTHTOK_REQD) return FocusNew();
  showMessage(*this, TextId::kConfigurePasswordError, Text(TextId::kOldPasswordIncorrect));
  old_->SetValue("");
  items_->Focus(*old_);
  return false;
}

bool ChangePasswordDialog::FocusNew() {
  items_->Focus(*new_);
  return false;
}

bool ChangePasswordDialog::FocusConfirm() {
  items_->Focus(*confirm_);
  return false;
}

bool ChangePasswordDialog::Change() {
  if (new_->Value() != confirm_->Value()) return Refuse(TextId::kNewPasswordsDoNotMatch);
  if (new_->Value().empty()) return Refuse(TextId::kEmptyPasswordsNotAllowed);
  if (new_->Value() == old_->Value() && !ConfirmSame()) return false;
  updateScreen();
  if (!PamChangePassword(session().user, Secret(old_->Value()), Secret(new_->Value())))
    return Refuse(TextId::kPasswordChangeFailed);
  Complete();
  return true;
}

bool ChangePasswordDialog::Refuse(TextId reason) {
  showMessage(*this, TextId::kConfigurePasswordError, Text(reason));
  new_->SetValue("");
  confirm_->SetValue("");
  return FocusNew();
}

bool ChangePasswordDialog::ConfirmSame() {
  SamePasswordConfirmDialog dialog(*this);
  return runWindow(dialog) != 0;
}

// The passwords go before any tool is run: none needs them, and each may leave a core file again.
void ChangePasswordDialog::Complete() {
  for (InputItem* field : {old_, new_, confirm_}) field->SetValue("");
  if (!storeUserAccounts())
    showMessage(*this, TextId::kConfigurePasswordError, Text(TextId::kErrorStoringUserAccount));
  updateScreen();
  completePasswordChange(session().user);
  session().emptyPassword = false;
}

SamePasswordConfirmDialog::SamePasswordConfirmDialog(Frame& owner) : Dialog(owner, 70, 8, 5) {}

int SamePasswordConfirmDialog::Foreground() {
  SetTitle(Text(TextId::kConfigurePasswordWarning));
  SetText(Text(TextId::kNewPasswordSameAsOld));
  SetFooter(kConfirmFooter);
  return waitForConfirmation(*this, Key::kEnter);
}

}  // namespace Kiva
