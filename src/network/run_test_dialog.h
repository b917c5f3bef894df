// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "network/network_check.h"
#include "network/test_targets.h"
#include "ui/dialog.h"

namespace Kiva {

/// Tries one target of the network test after the other and shows what came of each. Escape ends it
/// at any moment (0) and leaves a check that hangs behind; otherwise it waits for Enter at the end
/// (1).
class RunTestDialog : public Dialog {
 public:
  /// Addresses are valid and have their zones.
  RunTestDialog(Frame& owner, TestTargets targets);
  int Foreground() override;

 private:
  /// What stands in the parentheses of a line, and what it is about.
  bool Try(const std::string& line, NetworkCheck::Work work);
  bool TryAll();
  /// Nothing when the operator does not want to wait any longer.
  std::optional<bool> Await(NetworkCheck& check);
  void Show();

  const TestTargets targets_;
  TextArea* results_ = nullptr;
  /// One for each target tried so far, each with its line break.
  std::vector<std::string> lines_;
};

}  // namespace Kiva
