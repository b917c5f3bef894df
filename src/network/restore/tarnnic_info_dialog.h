// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hostctl/network/nic.h"
#include "ui/message_dialog.h"

namespace Kiva {

/// What a kernel NIC is on now; of no type, which is logged, where the host does not tell.
HostCtl::Network::ConnectionPoint connectionOf(HostCtl::Network::TarnNic& nic);

/// The details of a kernel NIC as they are now. What the host does not tell is logged and left out.
class TarnnicInfoDialog : public InfoDialog {
 public:
  TarnnicInfoDialog(Frame& owner, const std::unique_ptr<HostCtl::Network::TarnNic>& nic);

 private:
  void Fill() override;

  HostCtl::Network::TarnNic& nic_;
};

}  // namespace Kiva
