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
  void Restart();
  /// False for a step that the host failed, which is logged.
  bool Try(const std::function<void()>& step);
  /// "Done." or "Failed."
  std::string Outcome(bool succeeded) const;
  void Append(const std::string& text);
  /// Those that the interface has now, with a static IPv4 address: a leased one may be to come.
  void AppendAddresses(bool ipv4Static);
  void ReportFailure();

  HostCtl::Network::TarnNic& interface_;
  TextArea* progress_ = nullptr;
  bool failed_ = false;
};

}  // namespace Kiva
