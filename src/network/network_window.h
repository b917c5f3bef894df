// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hostctl/network/nic.h"
#include "network/apply_changes_dialog.h"
#include "network/pending_network.h"
#include "ui/menu_window.h"

namespace Kiva {

/// The settings of the management network: what is pending of each on the right, a dialog behind
/// each on the left. Nothing reaches the host before the operator leaves and says so; then one pass
/// applies everything. Opened from the menu; each opening reads the host afresh.
class NetworkWindow : public MenuWindow<NetworkWindow> {
 public:
  explicit NetworkWindow(Frame& owner);

  /// 1 when the operator left, 0 when the host could not be read, which the operator is told.
  int Foreground() override;
  /// Runs the apply pass. Always true.
  bool ApplyChanges();

 private:
  static const std::vector<Entry>& Entries();

  bool Open();
  bool Refuse(TextId title, TextId text);
  bool MayClose() override;
  ApplyChangesDialog::Answer Ask();

  std::string AdaptersText();
  std::string VlanText();
  std::string Ipv4Text();
  std::string Ipv6Text();
  std::string DnsText();
  std::string SuffixesText();

  void EnterAdapters();
  void EnterVlan();
  void EnterIpv4();
  void EnterIpv6();
  void EnterDns();
  void EnterSuffixes();
  /// Runs a dialog and takes over what it chose, where it is confirmed.
  template <typename Dialog, typename Choose>
  void Run(Dialog&& dialog, const Choose& choose);

  std::unique_ptr<HostCtl::Network::TarnNic> interface_;
  PendingNetwork pending_;
};

}  // namespace Kiva
