// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "tarnctl/network/network_info_impl.h"
#include "ui/dialog.h"

namespace Kiva {

/// Gives the host the network of a fresh host, and shows how far it is: powers off the virtual
/// machines where any run and the operator agrees (0 when not, with nothing changed), then clears
/// and builds the network. Machines that could not be powered off keep theirs. Nothing is rolled
/// back. Ends with Enter (1), also after a failure. `begun` turns true with the first change.
class DoRestoreNetworkDialog : public Dialog {
 public:
  DoRestoreNetworkDialog(Frame& owner, bool& begun);
  int Foreground() override;

 private:
  bool Confirm();
  /// False when the machines' tool failed.
  bool PowerOffMachines();
  void Restore(bool machinesAreOff);
  void Fail(const char* logLine);
  void Append(const std::string& text);
  void AppendLine(TextId text);

  TarnCtl::Network::NetworkInfoImpl network_;
  bool& begun_;
  TextArea* progress_ = nullptr;
};

}  // namespace Kiva
