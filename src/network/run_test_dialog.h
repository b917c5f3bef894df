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
  /// Both are false when the operator has ended the test.
  bool TryAll();
  /// Shows the line that says what is tried, and behind it what came of `work`.
  bool Try(const std::string& line, NetworkCheck::Work work);
  /// Nothing when the operator does not want to wait any longer.
  std::optional<bool> Await(NetworkCheck& check);
  void Show();

  const TestTargets targets_;
  TextArea* results_ = nullptr;
  /// One for each target tried so far, each with its line break.
  std::vector<std::string> lines_;
};

}  // namespace Kiva
