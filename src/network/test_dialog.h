// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

#include "hostctl/network/nic.h"
#include "network/test_targets.h"
#include "ui/dialog.h"
#include "ui/input_item.h"
#include "ui/item_list.h"

namespace Kiva {

/// Asks what the network test is to try, offers what the host itself uses, and runs the test on
/// Enter as often as the operator wants. Ends with Escape (0).
class TestDialog : public Dialog {
 public:
  TestDialog(Frame& owner, HostCtl::Network::TarnNic& interface);
  int Foreground() override;

 private:
  void LayOut();
  InputItem& AddField(const std::string& label, const std::string& value);
  void Handle(int key);
  void Edit(int key);
  /// Tells the operator of the first field that holds no address.
  bool AreAddressesValid();
  void RunTest();

  const std::string interfaceName_;
  ItemList* items_ = nullptr;
  std::array<InputItem*, 3> addresses_{};
  InputItem* hostname_ = nullptr;
};

}  // namespace Kiva
