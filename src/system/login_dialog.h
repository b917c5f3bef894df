// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/dialog.h"
#include "ui/input_item.h"
#include "ui/item_list.h"

namespace Kiva {

/// Asks for a login name and password, or for the PIN of the card that is in a reader, and stays
/// open until the operator is authenticated (1) or gives up with Escape (0). Whoever comes with an
/// expired password changes it first and logs in with the new one. The welcome screen
/// runs it before anything that an operator may do.
class LoginDialog : public Dialog {
 public:
  explicit LoginDialog(Frame& owner);
  int Foreground() override;

 private:
  enum class Mode { Password, Pin };

  void LayOut();
  void AddKeyboardLabel();
  /// Acts on a key; true once the operator is authenticated.
  bool Handle(int key);
  bool TakesKey(int key);
  void MoveForward();
  bool Enter();
  void ChooseKeyboard();
  bool Authenticate();
  void Refuse(TextId reason);
  void ChangeExpiredPassword();

  Mode mode_;
  ItemList* items_ = nullptr;
  LabelItem* keyboard_ = nullptr;
  InputItem* name_ = nullptr;
  InputItem* secret_ = nullptr;
};

/// Shown instead of the login where console logins are switched off. Its result is always 0: no key
/// lets anybody in.
class LoginDisabledDialog : public Dialog {
 public:
  explicit LoginDisabledDialog(Frame& owner);
  int Foreground() override;
};

}  // namespace Kiva
