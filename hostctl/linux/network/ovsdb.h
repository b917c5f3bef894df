// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

#include "linux/files.h"

namespace HostLinux {

/// The interfaces that Open vSwitch has on its bridges, by their names, with the name of the
/// bridge; an empty one where the bridge has no controller, so that it is no distributed switch's.
using OvsInterfaces = std::map<std::string, std::string>;

/// What Open vSwitch's database answers when it is asked for its bridges, ports and interfaces;
/// nothing for a text that is no such answer.
std::optional<OvsInterfaces> ovsInterfacesIn(const std::string& answer);

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
