// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

#include "ui/field_dialog.h"

namespace Kiva {

/// Asks what the network test is to try, offers what the host itself uses, and runs the test on
/// Enter as often as the operator wants. Ends with Escape (0).
class TestDialog : public FieldDialog {
 public:
  /// `interfaceName` is the management interface's; without one it is empty, and link-local
  /// addresses get no zone.
  TestDialog(Frame& owner, std::string interfaceName);

 private:
  InputItem& AddPrefilled(const std::string& label, const std::string& value);
  bool Takes(int key) const override;
  bool Accept() override;
  /// Tells the operator of the first field that holds no address.
  bool AreAddressesValid();
  void RunTest();

  const std::string interfaceName_;
  std::array<InputItem*, 3> addresses_{};
  InputItem* hostname_ = nullptr;
};

}  // namespace Kiva
