// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "harness/vm/machine.h"

/// A Debian server on which the package was installed a moment ago: its console shows the welcome
/// screen. Every test gets that same moment. script/test-vm says in KIVA_VM where its parts lie.
class InstalledMachine : public testing::Test {
 protected:
  static constexpr const char* kPassword = "first-secret";  ///< root's, from make-image
  static constexpr const char* kWelcome = "Shut Down/Restart";

  void SetUp() override;

  void LogIn(const std::string& password = kPassword);
  /// Runs a script in the machine's root shell; fails the test unless it succeeds.
  std::string Shell(const std::string& script);
  /// Asks a script until it succeeds.
  void WaitForShell(const std::string& script);

  std::optional<Harness::Machine> machine_;
};
