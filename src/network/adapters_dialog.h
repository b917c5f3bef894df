// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "network/adapter_checks_dialog.h"

namespace Kiva {

/// Lets the operator choose the physical adapters that carry the management network, the primary
/// one first, and asks before it takes one that another switch uses.
class AdaptersDialog : public AdapterChecksDialog {
 public:
  /// `switchName` is the management port group's switch, which may have what it has. `selected`
  /// starts checked, at the top of the list and in this order.
  AdaptersDialog(Frame& owner, std::string switchName, const std::vector<std::string>& selected);

 private:
  bool MayTake(const Pnics& chosen) override;
  bool IsUsedElsewhere(const Pnics& pnics) const;

  const std::string switchName_;
};

}  // namespace Kiva
