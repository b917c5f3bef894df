// SPDX-License-Identifier: MIT
#include "network/dns_configuration_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "network/field_keys.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

using HostCtl::Network::IpAddress;
using HostCtl::Network::parseIpAddress;

namespace {

constexpr int kFieldWidth = 44;

constexpr const char* kFooter =
    "{color:black}<Up/Down>{/color} {color:dark-grey}Select{/color}  "
    "{color:black}<Space>{/color} {color:dark-grey}Mark Selected{/color}"
    "{align:right}{color:black}<Enter>{/color} {color:dark-grey}OK{/color}  "
    "{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

std::string textOf(const std::optional<IpAddress>& server) {
  return server ? toString(*server) : "";
}

}  // namespace

DNSConfigurationDialog::DNSConfigurationDialog(Frame& owner, const PendingNetwork& pending)
    : Dialog(owner, 76, 15, 6) {
  Window& content = *Content();
  items_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
  const bool dhcp = pending.ipConfig.GetIpv4UseDhcp();
  automatic_ = &items_->Append(std::make_unique<RadioItem>(Text(TextId::kObtainDnsAutomatically)));
  automatic_->SetSelectable(dhcp ? Selectable::Yes : Selectable::No);
  manual_ = &items_->Append(std::make_unique<RadioItem>(Text(TextId::kUseFollowingDns)));
  primary_ = &AddField(TextId::kPrimaryDnsServer, textOf(pending.primaryDns));
  alternate_ = &AddField(TextId::kAlternateDnsServer, textOf(pending.alternateDns));
  hostname_ = &AddField(TextId::kHostname, pending.hostname);
  Mark(dhcp && pending.ipConfig.GetDnsFromDhcp() ? *automatic_ : *manual_);
}

InputItem& DNSConfigurationDialog::AddField(TextId label, const std::string& value) {
  InputItem& field = items_->Append(std::make_unique<InputItem>(Text(label), kFieldWidth));
  field.SetValue(value);
  return field;
}

void DNSConfigurationDialog::Mark(RadioItem& choice) {
  automatic_->SetSelected(&choice == automatic_);
  manual_->SetSelected(&choice == manual_);
  for (InputItem* field : {primary_, alternate_, hostname_})
    field->SetSelectable(&choice == manual_ ? Selectable::Yes : Selectable::No);
}

int DNSConfigurationDialog::Foreground() {
  SetTitle(Text(TextId::kDnsConfigurationTitle));
  SetText(Text(TextId::kDnsAutomaticOnlyWithIpAutomatic));
  SetFooter(kFooter);
  items_->FocusStart();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (key != Key::kEnter)
      Handle(key);
    else if (Accept())
      return 1;
  }
}

void DNSConfigurationDialog::Handle(int key) {
  if (key == Key::kUp)
    items_->MoveUp();
  else if (key == Key::kDown)
    items_->MoveDown();
  else
    Press(key);
}

void DNSConfigurationDialog::Press(int key) {
  Item* const focused = items_->Focused();
  const bool server = focused == primary_ || focused == alternate_;
  if (focused == automatic_ || focused == manual_) {
    if (key != Key::kSpace) return;
    Mark(focused == automatic_ ? *automatic_ : *manual_);
  } else if (isHostNameKey(key) || Key::isEditing(key) || (server && key == ':')) {
    focused->PressKey(key);
  }
  items_->Draw();
}

bool DNSConfigurationDialog::Accept() {
  return DnsFromDhcp() || (IsValid(*primary_) && IsValid(*alternate_));
}

bool DNSConfigurationDialog::IsValid(const InputItem& server) {
  if (server.Value().empty() || parseIpAddress(server.Value())) return true;
  items_->Focus(server);
  showMessage(*this, TextId::kInvalidDnsServerAddress, Text(TextId::kReenterDnsServerAddress));
  return false;
}

std::optional<IpAddress> DNSConfigurationDialog::PrimaryServer() const {
  return parseIpAddress(primary_->Value());
}

std::optional<IpAddress> DNSConfigurationDialog::AlternateServer() const {
  return parseIpAddress(alternate_->Value());
}

}  // namespace Kiva
