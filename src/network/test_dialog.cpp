// SPDX-License-Identifier: MIT
#include "network/test_dialog.h"

#include <algorithm>

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "network/run_test_dialog.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

/// The longest address.
constexpr int kFieldWidth = 45;

}  // namespace

TestDialog::TestDialog(Frame& owner, HostCtl::Network::TarnNic& interface)
    : Dialog(owner, 78, 14, 6), interfaceName_(interface.GetInterfaceName()) {
  Window& content = *Content();
  items_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
  const TestTargets targets = preparedTargets(readTestFacts());
  for (std::size_t i = 0; i < addresses_.size(); ++i)
    addresses_[i] =
        &AddField(formatted("%s #%d:", Text(TextId::kPingAddress), static_cast<int>(i) + 1),
                  targets.addresses[i]);
  hostname_ = &AddField(Text(TextId::kResolveHostname), targets.hostname);
}

InputItem& TestDialog::AddField(const std::string& label, const std::string& value) {
  InputItem& field = items_->Append(std::make_unique<InputItem>(label, kFieldWidth));
  field.SetValue(value);
  return field;
}

int TestDialog::Foreground() {
  SetTitle(Text(TextId::kTestManagementNetworkTitle));
  SetText(Text(TextId::kNetworkTestByDefault));
  SetFooter(std::string(kSelect) + kOkCancelFooter);
  items_->FocusStart();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    Handle(key);
  }
}

void TestDialog::Handle(int key) {
  if (key == Key::kUp)
    items_->MoveUp();
  else if (key == Key::kDown)
    items_->MoveDown();
  else if (key == Key::kEnter)
    RunTest();
  else
    Edit(key);
}

void TestDialog::Edit(int key) {
  Item* field = items_->Focused();
  const bool typed = field == hostname_ ? isNameKey(key) : isAddressKey(key);
  if (!typed && !Key::isEditing(key)) return;
  field->PressKey(key);
  items_->Draw();
}

bool TestDialog::AreAddressesValid() {
  const auto wrong = std::find_if(addresses_.begin(), addresses_.end(), [](const InputItem* field) {
    return !field->Value().empty() && !HostCtl::Network::parseIpAddress(field->Value());
  });
  if (wrong == addresses_.end()) return true;
  items_->Focus(**wrong);
  showMessage(*this, TextId::kInvalidIpAddress, Text(TextId::kInvalidIpOrIPv6Address));
  return false;
}

void TestDialog::RunTest() {
  if (!AreAddressesValid()) return;
  TestTargets targets;
  targets.hostname = hostname_->Value();
  for (std::size_t i = 0; i < addresses_.size(); ++i)
    if (!addresses_[i]->Value().empty())
      targets.addresses[i] = withZone(addresses_[i]->Value(), interfaceName_);
  RunTestDialog dialog(*this, targets);
  runWindow(dialog);
}

}  // namespace Kiva
