// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/network/nic.h"
#include "ui/message_dialog.h"

namespace Kiva {

/// The details of a physical adapter as they are now, and who uses it.
class AdapterInfoDialog : public InfoDialog {
 public:
  /// `pnic` as it was known; what the host does not tell now is shown as it was, and an adapter
  /// that is gone as "Disconnected".
  AdapterInfoDialog(Frame& owner, const HostCtl::Network::PnicRecord& pnic);

 private:
  void Fill() override;
  void Update();
  /// Empty where the host does not tell.
  std::string UsersText() const;

  HostCtl::Network::PnicRecord pnic_;
  bool gone_ = false;
};

}  // namespace Kiva
