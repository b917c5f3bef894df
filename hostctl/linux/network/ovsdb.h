// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "linux/files.h"
#include "linux/network/ovs_model.h"

namespace HostLinux {

/// The bridges as they are now; nothing where nobody answers within a quarter of a second.
std::optional<OvsBridges> askForOvsBridges(const Files& files);

/// For a change, which cannot go without. None where Open vSwitch does not run; a database that
/// does not answer within five seconds is an HostCtlException of `operation`.
OvsBridges readOvsBridges(const Files& files, const std::string& operation);

/// Open vSwitch as the machine's distributed switches. Its database is asked only where it runs, a
/// quarter of a second at most, and not again while the last answer is less than five seconds old;
/// a failure is logged and counts as an answer that knows nothing.
class OvsDatabase {
 public:
  using Clock = std::chrono::steady_clock;

  /// Nothing where nobody answers.
  const std::optional<OvsInterfaces>& Read(const Files& files, Clock::time_point now);

 private:
  std::optional<OvsInterfaces> last_;
  Clock::time_point notBefore_;
};

}  // namespace HostLinux
