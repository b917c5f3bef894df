// SPDX-License-Identifier: MIT
#include "network/dns_configuration_dialog.h"

#include "network/field_keys.h"

namespace Kiva {

using HostCtl::Network::IpAddress;
using HostCtl::Network::parseIpAddress;

namespace {

constexpr int kFieldWidth = 44;

bool isAutomatic(const PendingNetwork& pending) {
  return pending.ipConfig.GetIpv4UseDhcp() && pending.ipConfig.GetDnsFromDhcp();
}

}  // namespace

DNSConfigurationDialog::DNSConfigurationDialog(Frame& owner, const PendingNetwork& pending)
    : ChoiceDialog(owner, {.title = TextId::kDnsConfigurationTitle,
                           .text = TextId::kDnsAutomaticOnlyWithIpAutomatic,
                           .width = 76,
                           .height = 15,
                           .topHeight = 6}),
      automatic_(AddChoice(TextId::kObtainDnsAutomatically, isAutomatic(pending))),
      manual_(AddChoice(TextId::kUseFollowingDns, !isAutomatic(pending))),
      primary_(AddFieldOf(manual_, Text(TextId::kPrimaryDnsServer), kFieldWidth,
                          toString(pending.primaryDns))),
      alternate_(AddFieldOf(manual_, Text(TextId::kAlternateDnsServer), kFieldWidth,
                            toString(pending.alternateDns))),
      hostname_(AddFieldOf(manual_, Text(TextId::kHostname), kFieldWidth, pending.hostname)) {
  if (!pending.ipConfig.GetIpv4UseDhcp()) automatic_.SetSelectable(Selectable::No);
}

bool DNSConfigurationDialog::Takes(int key) const {
  return isHostNameKey(key) || (key == ':' && !hostname_.IsFocused());
}

bool DNSConfigurationDialog::Accept() {
  return DnsFromDhcp() || (IsValid(primary_) && IsValid(alternate_));
}

bool DNSConfigurationDialog::IsValid(const InputItem& server) {
  using enum TextId;
  if (server.Value().empty() || parseIpAddress(server.Value())) return true;
  return Refuse(server, kInvalidDnsServerAddress, kReenterDnsServerAddress);
}

std::optional<IpAddress> DNSConfigurationDialog::PrimaryServer() const {
  return parseIpAddress(primary_.Value());
}

std::optional<IpAddress> DNSConfigurationDialog::AlternateServer() const {
  return parseIpAddress(alternate_.Value());
}

}  // namespace Kiva
