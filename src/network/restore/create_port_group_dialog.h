// SPDX-License-Identifier: MIT
#pragma once

#include "network/restore/standard_switches.h"
#include "ui/carousel_item.h"
#include "ui/field_dialog.h"

namespace Kiva {

/// Asks for the name of a new port group and the standard switch for it, and makes it. Result 1
/// when it was made, 0 after Escape. The network restore options open it.
class CreatePortGroupDialog : public FieldDialog {
 public:
  explicit CreatePortGroupDialog(Frame& owner);

 private:
  using SwitchRow = CarouselRadioItem<StandardSwitch, SwitchInfoDialog>;

  bool Takes(int key) const override;
  void ShowDetails() override;
  bool Accept() override;

  InputItem& name_;
  SwitchRow& switch_;
};

}  // namespace Kiva
