// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "network/restore/standard_switches.h"
#include "network/restore/tarnnic_info_dialog.h"
#include "ui/carousel_item.h"
#include "ui/field_dialog.h"

namespace Kiva {

/// A port group and the switch that it is on.
struct PortGroupChoice {
  std::string name;
  StandardSwitch of;
};

/// The details of the switch that a port group is on.
struct PortGroupInfoDialog : SwitchInfoDialog {
  PortGroupInfoDialog(Frame& owner, const PortGroupChoice& shown)
      : SwitchInfoDialog(owner, shown.of) {}
};

/// Asks which kernel NIC shall move to which port group of a standard switch, and moves it. Result
/// 1 when it is there, 0 after Escape. The network restore options open it.
class MigrateTarnnicDialog : public FieldDialog {
 public:
  explicit MigrateTarnnicDialog(Frame& owner);

 private:
  using NicRow = CarouselRadioItem<std::unique_ptr<HostCtl::Network::TarnNic>, TarnnicInfoDialog>;
  using PortGroupRow = CarouselRadioItem<PortGroupChoice, PortGroupInfoDialog>;

  bool Takes(int) const override { return false; }
  void PressKey(int key) override;
  void ShowDetails() override;
  bool Accept() override;
  bool Migrate(HostCtl::Network::TarnNic& nic, const PortGroupChoice& target);
  /// The port group that the chosen NIC is on, where that is one of the choices.
  void ShowOwnPortGroup();

  NicRow& nic_;
  PortGroupRow& portGroup_;
};

}  // namespace Kiva
