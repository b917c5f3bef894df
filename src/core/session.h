// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Kiva {

/// Who is at the console. One for the process, written by the user-interface thread only.
struct Session {
  /// True from a login to its log-out; setSessionActive keeps it.
  bool active = false;
  /// A stop request that came while an operator was logged in.
  bool stopPending = false;
  /// The user of the last authentication that succeeded or found an expired password.
  std::string user;
  /// That user's card was in a reader at login.
  bool bySmartCard = false;
  /// The password, or PIN, that succeeded was empty.
  bool emptyPassword = false;
  /// The user of the card that is in a reader; empty without one.
  std::string smartCardUserId;
};

Session& session();

}  // namespace Kiva
