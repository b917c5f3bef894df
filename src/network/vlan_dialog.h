// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ui/field_dialog.h"

namespace Kiva {

/// Asks for the VLAN of the management port group and warns of the one that stands for all VLANs.
class VlanDialog : public FieldDialog {
 public:
  /// 0 for none, here and below.
  VlanDialog(Frame& owner, std::int16_t vlanId);

  /// What the operator accepted last.
  std::int16_t VlanId() const { return vlanId_; }

 private:
  bool Takes(int key) const override;
  bool Accept() override;

  std::int16_t vlanId_;
  InputItem& field_;
};

/// A decimal number from 1 to 4095, or the empty text for 0.
std::optional<std::int16_t> parseVlanId(const std::string& text);

}  // namespace Kiva
