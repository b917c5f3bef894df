// SPDX-License-Identifier: MIT
#include "network/test_dialog.h"

#include <algorithm>

#include "core/log.h"
#include "network/run_test_dialog.h"
#include "network/test_targets.h"

namespace Kiva {

namespace {

/// The longest address.
constexpr int kFieldWidth = 45;

}  // namespace

TestDialog::TestDialog(Frame& owner, std::string interfaceName)
    : FieldDialog(owner, {.title = TextId::kTestManagementNetworkTitle,
                          .text = TextId::kNetworkTestByDefault,
                          .width = 78,
                          .height = 14,
                          .topHeight = 6,
                          .footer = std::string(kSelect) + kOkCancelFooter}),
      interfaceName_(std::move(interfaceName)) {
  const TestTargets targets = preparedTargets(readTestFacts());
  for (std::size_t i = 0; i < addresses_.size(); ++i)
    addresses_[i] =
        &AddPrefilled(formatted("%s #%d:", Text(TextId::kPingAddress), static_cast<int>(i) + 1),
                      targets.addresses[i]);
  hostname_ = &AddPrefilled(Text(TextId::kResolveHostname), targets.hostname);
}

InputItem& TestDialog::AddPrefilled(const std::string& label, const std::string& value) {
  InputItem& field = AddField(label, kFieldWidth);
  field.SetValue(value);
  return field;
}

bool TestDialog::Takes(int key) const {
  return hostname_->IsFocused() ? isNameKey(key) : isAddressKey(key);
}

bool TestDialog::Accept() {
  if (AreAddressesValid()) RunTest();
  return false;
}

bool TestDialog::AreAddressesValid() {
  const auto wrong = std::find_if(addresses_.begin(), addresses_.end(), [](const InputItem* field) {
    return !field->Value().empty() && !HostCtl::Network::parseIpAddress(field->Value());
  });
  return wrong == addresses_.end() ||
         Refuse(**wrong, TextId::kInvalidIpAddress, TextId::kInvalidIpOrIPv6Address);
}

void TestDialog::RunTest() {
  TestTargets targets;
  targets.hostname = hostname_->Value();
  for (std::size_t i = 0; i < addresses_.size(); ++i)
    if (!addresses_[i]->Value().empty())
      targets.addresses[i] = withZone(addresses_[i]->Value(), interfaceName_);
  RunTestDialog dialog(*this, targets);
  runWindow(dialog);
}

}  // namespace Kiva
