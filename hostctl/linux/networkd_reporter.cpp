// SPDX-License-Identifier: MIT
#include "linux/networkd_reporter.h"

#include <syslog.h>

namespace HostLinux {

namespace {

constexpr std::chrono::seconds kFirstScreen{1};
constexpr std::chrono::seconds kGoodFor{2};
constexpr std::chrono::seconds kRestAfterFailure{30};

}  // namespace

const std::vector<ReportedAddress>& NetworkdReporter::Read(const Files& files,
                                                           Clock::time_point now) {
  if (!asked_) {
    asked_ = true;
    notBefore_ = now + kFirstScreen;
  }
  if (!files.Exists("/run/systemd/netif"))
    last_.clear();
  else if (now >= notBefore_)
    Ask(now);
  return last_;
}

void NetworkdReporter::Ask(Clock::time_point now) {
  if (!ask_) ask_ = module_.Find<NetworkdReportFunction>(kNetworkdReportSymbol);
  last_.clear();
  std::string error = "kiva-networkd.so cannot be loaded";
  const bool answered = ask_ && ask_(last_, error);
  notBefore_ = now + (answered ? kGoodFor : kRestAfterFailure);
  if (!answered)
    syslog(LOG_USER | LOG_INFO, "networkd does not report on addresses: %s", error.c_str());
}

}  // namespace HostLinux
