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
  /// What the operator accepted last; as it was pending where DHCP is to say. Absent: not set.
  std::optional<HostCtl::Network::IpAddress> PrimaryServer() const { return accepted_.primary; }
  std::optional<HostCtl::Network::IpAddress> AlternateServer() const { return accepted_.alternate; }
  std::string Hostname() const { return accepted_.hostname; }

 private:
  struct Values {
    std::optional<HostCtl::Network::IpAddress> primary, alternate;
    std::string hostname;
  };
  bool Takes(int key) const override;
  bool Accept() override;
  bool IsValid(const InputItem& server);

  Values accepted_;
  RadioItem& automatic_;
  RadioItem& manual_;
  InputItem& primary_;
  InputItem& alternate_;
  InputItem& hostname_;
};

}  // namespace Kiva
