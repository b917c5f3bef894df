// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "hostctl/network/ip_config.h"
#include "network/choice_dialog.h"
#include "network/pending_network.h"

namespace Kiva {

/// Asks whether the host has IPv6, and how the management interface gets its IPv6 addresses. It
/// works on a copy of the pending configuration and never touches the host.
class IPv6ConfigurationDialog : public ChoiceDialog {
 public:
  /// How many static addresses an operator can give.
  static constexpr std::size_t kAddresses = 3;

  IPv6ConfigurationDialog(Frame& owner, const PendingNetwork& pending);

  /// What the operator accepted; as it was pending where nothing was marked or typed.
  bool Ipv6Enabled() const { return enabled_; }
  const HostCtl::Network::IpConfig& Config() const { return config_; }

 private:
  /// What the marked choice makes of the pending configuration.
  HostCtl::Network::IpConfig MarkedConfig() const;
  InputItem& AddAddress(int number);
  bool Takes(int key) const override;
  bool Accept() override;
  /// Bring the fields' values into `config` where they are valid.
  bool AcceptAddresses(HostCtl::Network::IpConfig& config);
  bool AcceptGateway(HostCtl::Network::IpConfig& config);

  bool enabled_;
  HostCtl::Network::IpConfig config_;
  /// The static networks of the pending configuration that have a field, in their order.
  std::vector<HostCtl::Network::Ipv6Network> shown_;
  RadioItem& disable_;
  RadioItem& dynamic_;
  CheckItem& dhcp_;
  RadioItem& static_;
  std::array<InputItem*, kAddresses> addresses_;
  InputItem& gateway_;
};

}  // namespace Kiva
