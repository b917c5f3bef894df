// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "tarnctl/system/system_info_impl.h"
#include "ui/dialog.h"
#include "ui/item_list.h"

namespace Kiva {

/// Lets the operator choose the layout of the console's keyboard: from the menu and, so that a
/// password can be typed at all, from the login dialog. Its result is 1 when a layout was put in
/// force and stored, else 0: after Escape, when there is none to choose, and when the host failed,
/// which it tells itself.
class KeyboardDialog : public Dialog {
 public:
  explicit KeyboardDialog(Frame& owner);
  int Foreground() override;

 private:
  void ListLayouts();
  /// The key that ends the choice: Enter or Escape.
  int Choose();
  void MarkFocused();
  bool Apply();

  TarnCtl::System::SystemInfoImpl system_;
  ItemList* items_ = nullptr;
  std::vector<std::string> names_;
  std::vector<RadioItem*> radios_;
  int marked_ = -1;
};

/// The layout that is configured, safe to put into markup; empty when the host does not tell.
std::string configuredKeyboardLayout();

}  // namespace Kiva
