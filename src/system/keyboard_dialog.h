// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "tarnctl/system/system_info_impl.h"
#include "ui/list_dialog.h"

namespace Kiva {

/// Lets the operator choose the layout of the console's keyboard: from the menu and, so that a
/// password can be typed at all, from the login dialog. Its result is 1 when a layout was put in
/// force and stored, else 0: after Escape, when there is none to choose, and when the host failed,
/// which it tells itself.
class KeyboardDialog : public ListDialog {
 public:
  explicit KeyboardDialog(Frame& owner);
  int Foreground() override;

 private:
  void AddRows() override;
  void PressKey(int key) override;
  bool Accept() override { return true; }
  bool Apply();

  TarnCtl::System::SystemInfoImpl system_;
  std::vector<std::string> names_;
  std::vector<RadioItem*> radios_;
  int marked_ = -1;
};

/// The layout that is configured, safe to put into markup; empty when the host does not tell.
std::string configuredKeyboardLayout();

}  // namespace Kiva
