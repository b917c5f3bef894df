// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "network/choice_dialog.h"
#include "network/pending_network.h"

namespace Kiva {

/// Asks whether DHCP or the operator names the host and its name servers.
class DNSConfigurationDialog : public ChoiceDialog {
 public:
  DNSConfigurationDialog(Frame& owner, const PendingNetwork& pending);

  bool DnsFromDhcp() const { return automatic_.IsSelected(); }
  /// What the fields hold, which counts only where DHCP is not to say. Absent: not set.
  std::optional<HostCtl::Network::IpAddress> PrimaryServer() const;
  std::optional<HostCtl::Network::IpAddress> AlternateServer() const;
  std::string Hostname() const { return hostname_.Value(); }

 private:
  bool Takes(int key) const override;
  bool Accept() override;
  bool IsValid(const InputItem& server);

  RadioItem& automatic_;
  RadioItem& manual_;
  InputItem& primary_;
  InputItem& alternate_;
  InputItem& hostname_;
};

}  // namespace Kiva
