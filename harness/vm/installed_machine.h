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
  static constexpr const char* kPassword = "firstsecret";  ///< root's, from make-image
  static constexpr const char* kWelcome = "Shut Down/Restart";
  static constexpr const char* kSshIn = "welcome";
  static constexpr const char* kSshRefuses = "Permission denied";
  static constexpr const char* kSshSilent = "Connection ";  ///< reset or closed
  static constexpr const char* kLogin = "Authentication Required";

  void SetUp() override;
  /// Shows the log of a machine on which a test failed.
  void TearDown() override;

  /// Logs in as root; `key` is F2 or F12.
  void LogIn(const std::string& key = "F2", const std::string& password = kPassword);
  /// Logs out of the menu.
  void LogOut() { machine_->Do({"Esc", std::string("wait:") + kWelcome}); }
  /// Moves the focus down a menu or a list to an entry.
  void Focus(const std::string& entry);
  void Choose(const std::string& entry);

  /// Runs a script in the machine's root shell; fails the test unless it succeeds.
  std::string Shell(const std::string& script);
  /// Asks a script there until it succeeds.
  void WaitForSuccess(const std::string& script);
  /// Expects that sooner or later (the server restarts itself for a change) SSH from outside has
  /// `wanted` in its answer to the user "visitor": kSshIn, or the client's complaint.
  void ExpectSsh(const std::string& wanted);
  /// Waits until the machine has started afresh and shows its welcome screen again; `bootId` is
  /// what BootId answered before.
  void WaitForNewStart(const std::string& bootId);
  std::string BootId() { return Shell("cat /proc/sys/kernel/random/boot_id"); }

  std::optional<Harness::Machine> machine_;

 private:
  std::string SshAnswer();
};
