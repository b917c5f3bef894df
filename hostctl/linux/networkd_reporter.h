// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <vector>

#include "linux/files.h"
#include "linux/loadable_module.h"
#include "linux/networkd_report.h"

namespace HostLinux {

/// Asks networkd who gave the host its addresses, but only when that costs an operator nothing: not
/// where networkd does not run, not in the first second after the first question (the first screen
/// asks several times), not within 30 seconds of a failure, and not again while the last answer is
/// less than 2 seconds old.
class NetworkdReporter {
 public:
  using Clock = std::chrono::steady_clock;

  /// Asks through `ask`; null stands for the module kiva-networkd.so.
  explicit NetworkdReporter(NetworkdReportFunction ask = nullptr) : ask_(ask) {}

  const std::vector<ReportedAddress>& Read(const Files& files, Clock::time_point now);

 private:
  void Ask(Clock::time_point now);

  NetworkdReportFunction ask_;
  Module module_{"kiva-networkd"};
  bool asked_ = false;
  Clock::time_point notBefore_;
  std::vector<ReportedAddress> last_;
};

}  // namespace HostLinux
