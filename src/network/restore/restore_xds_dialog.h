// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "network/restore/distributed_port.h"
#include "ui/field_dialog.h"

namespace Kiva {

/// Asks what the management network's port on a distributed switch shall be, and has the host make
/// it and move the management interface to it. Result 1 when it is there; 0 after Escape, and
/// without a form where there is no such port to repair. The network restore options open it.
class RestorexDSDialog : public FieldDialog {
 public:
  explicit RestorexDSDialog(Frame& owner);
  int Foreground() override;

 private:
  bool Takes(int key) const override;
  void PressKey(int key) override;
  bool Accept() override;

  /// Finds what there is to repair as it is now; false after a message over `over` why it cannot
  /// be.
  bool Find(Frame& over);
  bool FailWith(Frame& over, TextId text, const std::string& cause);
  /// Nothing where the operator went back.
  std::optional<std::vector<std::string>> ChooseUplinks();
  bool MoveTo(const HostCtl::Network::HostLocalPort& port);

  InputItem& vlan_;
  CheckItem& unblocked_;
  CheckItem& select_;
  std::unique_ptr<HostCtl::Network::TarnNic> nic_;
  DistributedAttachment at_;
};

}  // namespace Kiva
