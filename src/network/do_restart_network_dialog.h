// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "hostctl/network/nic.h"
#include "ui/dialog.h"

namespace Kiva {

/// Takes the management interface down and up again, whatever became of the first, and shows how
/// far it is and which addresses the interface has then. A failure is told in a dialog of its own.
/// Ends with Enter (1).
class DoRestartNetworkDialog : public Dialog {
 public:
  DoRestartNetworkDialog(Frame& owner, HostCtl::Network::TarnNic& interface);
  int Foreground() override;

 private:
  void Append(const std::string& text);
  /// "Done." or "Failed." for a step, which is logged where it failed.
  const char* Outcome(const std::function<void()>& step);
  void Restart();
  void ReportFailure();

  HostCtl::Network::TarnNic& interface_;
  TextArea* progress_ = nullptr;
  bool failed_ = false;
};

/// The lines of the addresses that an interface runs with, for the restart's report: a static IPv4
/// address, then IPv6 networks, of which there are three at most. Nothing for one that has none.
std::string restartedAddresses(const HostCtl::Network::IpConfig& running, bool ipv4Static,
                               const std::string& label);

}  // namespace Kiva
