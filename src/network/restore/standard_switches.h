// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "ui/message_dialog.h"

namespace Kiva {

/// A standard switch as the dialogs that repair a network offer it.
struct StandardSwitch {
  std::string name;
  std::vector<std::string> uplinks;
  std::vector<std::string> portGroups;
};

/// The host's; none, which is logged, where it does not tell.
std::vector<StandardSwitch> readStandardSwitches();

/// "GROUP/SWITCH" as markup, or what there is of it. A long name of a group leaves room for the
/// switch's.
std::string portGroupText(const std::string& portGroup, const std::string& switchName, int columns);

/// The details of a switch as it was read.
class SwitchInfoDialog : public InfoDialog {
 public:
  SwitchInfoDialog(Frame& owner, const StandardSwitch& shown);

 private:
  void Fill() override;

  const StandardSwitch shown_;
};

}  // namespace Kiva
