// SPDX-License-Identifier: MIT
#include "network/do_restart_network_dialog.h"

#include <algorithm>

#include "core/key_wait.h"
#include "core/log.h"
#include "core/screen.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "system/audit_events.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::IpConfig;
using HostCtl::Network::TarnNic;

namespace {

constexpr std::size_t kShownNetworks = 2;
constexpr std::size_t kAllThatFit = 3;

// A host that does not tell shows no IPv4 address.
template <typename Read>
IpConfig configFrom(const Read& read) try {
  return read();
} catch (const HostCtlException& exception) {
  logError("%s", exception.what());
  return {};
}

/// A static IPv4 address, then the IPv6 networks that have room, one a line and each behind
/// `label`; nothing at all where there are none.
std::string addressLines(const IpConfig& running, bool ipv4Static, const std::string& label) {
  const std::string begin = "   " + label;
  std::string lines;
  if (ipv4Static && !running.GetIpv4Address().IsEmpty())
    lines = begin + " " + running.GetIpv4Address().GetStringAddress() + "\n";
  auto networks = running.GetIpv6Networks();
  std::erase_if(networks, [](const auto& network) { return network.address.IsLinkLocal(); });
  const std::size_t shown = networks.size() == kAllThatFit ? kAllThatFit : kShownNetworks;
  for (std::size_t i = 0; i < std::min(shown, networks.size()); ++i)
    lines += begin + networks[i].ToString() + "\n";
  if (networks.size() > shown) lines += "   ...\n";
  return lines.empty() ? lines : "\n" + lines;
}

}  // namespace

DoRestartNetworkDialog::DoRestartNetworkDialog(Frame& owner, TarnNic& interface)
    : Dialog(owner, 70, 16, 5), interface_(interface) {
  Window& content = *Content();
  progress_ = &content.Make<TextArea>(Rect{0, 0, content.Width(), content.Height()}, kParentColor);
}

int DoRestartNetworkDialog::Foreground() {
  Restart();
  SetFooter(kDoneFooter);
  if (failed_) ReportFailure();
  discardTypeAhead();
  waitForEnter(*this);
  return 1;
}

void DoRestartNetworkDialog::Restart() {
  const IpConfig configured = configFrom([&] { return interface_.GetConfiguredIpConfig(); });
  announceOperation("evb.user.kiva.network.restart", "Restarting " + interface_.GetInterfaceName());
  SetTitle(Text(TextId::kRestartManagementNetworkTitle));
  SetText(Text(TextId::kPleaseWaitNetworkRestarts));
  Append(std::string(Text(TextId::kStoppingManagementNetwork)) + " ");
  Append(Outcome(Try([&] { interface_.ReleaseLease(), interface_.Disable(); })) + "\n");
  Append(std::string(Text(TextId::kStartingManagementNetwork)) + " ");
  const bool started = Try([&] { interface_.Enable(); });
  if (started) AppendAddresses(configured.GetIpv4UseStatic());
  Append(Outcome(started));
}

void DoRestartNetworkDialog::AppendAddresses(bool ipv4Static) {
  const IpConfig running =
      configFrom([&] { return interface_.Refresh(), interface_.GetIpConfig(); });
  Append(addressLines(running, ipv4Static, Text(TextId::kIpAddressIs)));
}

// The operator sees the step before it is taken: none of them waits for a key.
void DoRestartNetworkDialog::Append(const std::string& text) {
  progress_->AppendText(text);
  updateScreen();
}

bool DoRestartNetworkDialog::Try(const std::function<void()>& step) try {
  step();
  return true;
} catch (const HostCtlException& exception) {
  logError("%s", exception.what());
  failed_ = true;
  return false;
}

std::string DoRestartNetworkDialog::Outcome(bool succeeded) const {
  return Text(succeeded ? TextId::kDone : TextId::kFailed);
}

void DoRestartNetworkDialog::ReportFailure() {
  const bool gone = !findManagementInterface();
  showMessage(*this, TextId::kRestartManagementNetworkError,
              Text(gone ? TextId::kManagementNetworkInterfaceNotFound
                        : TextId::kManagementNetworkOperationFailed));
}

}  // namespace Kiva
