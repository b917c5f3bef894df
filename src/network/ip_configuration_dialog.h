// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/network/ip_config.h"
#include "network/choice_dialog.h"

namespace Kiva {

/// Asks how the management interface gets its IPv4 address. It works on a copy of the pending
/// configuration and never touches the host.
class IPConfigurationDialog : public ChoiceDialog {
 public:
  IPConfigurationDialog(Frame& owner, const HostCtl::Network::IpConfig& pending);

  /// The configuration as the operator accepted it; it has no gateway unless the address is static.
  const HostCtl::Network::IpConfig& Config() const { return config_; }

 private:
  bool Takes(int key) const override;
  bool Accept() override;
  bool AcceptStatic();

  HostCtl::Network::IpConfig config_;
  RadioItem& none_;
  RadioItem& dhcp_;
  RadioItem& static_;
  InputItem& address_;
  InputItem& netmask_;
  InputItem& gateway_;
};

}  // namespace Kiva
