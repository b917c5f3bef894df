// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hostctl/network/nic.h"
#include "ui/message_dialog.h"

namespace Kiva {

/// Where a kernel NIC is now; what it is on, without any text where the host does not tell.
HostCtl::Network::ConnectionPoint connectionOf(const HostCtl::Network::TarnNic& nic);

/// The details of a kernel NIC as it was when it was asked for.
class TarnnicInfoDialog : public InfoDialog {
 public:
  TarnnicInfoDialog(Frame& owner, const std::unique_ptr<HostCtl::Network::TarnNic>& nic);

 private:
  void Fill() override;

  const HostCtl::Network::TarnNic& nic_;
};

}  // namespace Kiva
