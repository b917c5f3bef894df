// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "network/adapter_checks_dialog.h"

namespace Kiva {

/// Lets the operator choose which uplinks of a distributed switch a new port uses, and warns of
/// none and of those that another port of this host uses.
class UplinksDialog : public AdapterChecksDialog {
 public:
  /// All uplinks start checked; `used` are those of other ports.
  UplinksDialog(Frame& owner, const Pnics& uplinks, std::vector<std::string> used);

 private:
  bool MayTake(const Pnics& chosen) override;
  bool Warn(TextId text);

  const std::vector<std::string> used_;
};

}  // namespace Kiva
