// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"
#include "ui/input_item.h"
#include "ui/item_list.h"

namespace Kiva {

/// The columns of a field for a name, a password or a PIN, here and in the login.
inline constexpr int kAccountFieldWidth = 30;

/// Changes the password of the session's user, whom the old password has to vouch for, and makes
/// the change last. The menu runs it, and the login for a password that has expired. Its result is
/// 1 once a password was changed and 0 when the operator gave up; every refusal leaves it open.
/// What was typed ahead counts as long as nothing goes wrong, so a whole change can be typed in one
/// go.
class ChangePasswordDialog : public Dialog {
 public:
  explicit ChangePasswordDialog(Frame& owner);
  int Foreground() override;

 private:
  /// What a key does; true once the password was changed.
  using Action = bool (ChangePasswordDialog::*)();
  /// Null where the key does nothing in the focused field.
  static Action ActionFor(int key, int field);

  void LayOut();
  InputItem& AddField(TextId label);
  bool Handle(int key);
  bool VerifyOld();
  bool FocusNew();
  bool FocusConfirm();
  bool Change();
  /// Tells why the new password was not taken, and asks for another.
  bool Refuse(TextId reason);
  bool ConfirmSame();
  void Complete();

  ItemList* items_ = nullptr;
  InputItem* old_ = nullptr;
  InputItem* new_ = nullptr;
  InputItem* confirm_ = nullptr;
};

/// Asks whether a new password shall really be the old one: 1 for Enter, 0 for Escape.
class SamePasswordConfirmDialog : public Dialog {
 public:
  explicit SamePasswordConfirmDialog(Frame& owner);
  int Foreground() override;
};

}  // namespace Kiva
