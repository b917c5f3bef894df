// SPDX-License-Identifier: MIT
#include "network/ip_configuration_dialog.h"

#include "core/keys.h"

namespace Kiva {

using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv4Address;

namespace {

constexpr int kFieldWidth = 16;

}  // namespace

IPConfigurationDialog::IPConfigurationDialog(Frame& owner, const IpConfig& pending)
    : ChoiceDialog(owner, {.title = TextId::kIPv4ConfigurationTitle,
                           .text = TextId::kHostCanObtainSettingsByDhcp,
                           .width = 70,
                           .height = 17,
                           .topHeight = 7}),
      config_(pending),
      none_(AddChoice(TextId::kDisableIPv4Configuration, pending.GetIpv4UseNone())),
      dhcp_(AddChoice(TextId::kUseDynamicIPv4Address, pending.GetIpv4UseDhcp())),
      static_(AddChoice(TextId::kSetStaticIPv4Address, pending.GetIpv4UseStatic())),
      address_(AddFieldOf(static_, Text(TextId::kIPv4Address), kFieldWidth,
                          pending.GetIpv4Address().GetStringAddress())),
      netmask_(AddFieldOf(static_, Text(TextId::kSubnetMask), kFieldWidth,
                          pending.GetIpv4Netmask().GetStringAddress())),
      gateway_(AddFieldOf(static_, Text(TextId::kDefaultGateway), kFieldWidth,
                          pending.GetIpv4Gateway().GetStringAddress())) {}

bool IPConfigurationDialog::Takes(int key) const {
  return Key::isDigit(key) || key == '.';
}

bool IPConfigurationDialog::Accept() {
  if (static_.IsSelected() && !AcceptStatic()) return false;
  config_.SetUseDhcp(dhcp_.IsSelected(), none_.IsSelected());
  if (!static_.IsSelected()) config_.SetIpv4Gateway({});
  return true;
}

bool IPConfigurationDialog::AcceptStatic() {
  using enum TextId;
  const auto address = Ipv4Address::FromString(address_.Value());
  if (!address) return Refuse(address_, kInvalidIpAddress, kReenterIPv4Address);
  const auto netmask = Ipv4Address::FromString(netmask_.Value());
  if (!netmask || !Ipv4Address::IsValidNetmask(*netmask))
    return Refuse(netmask_, kInvalidSubnet, kReenterSubnet);
  const auto gateway = Ipv4Address::FromString(gateway_.Value());
  if (!gateway) return Refuse(gateway_, kInvalidGatewayAddress, kReenterGatewayAddress);
  config_.SetIpv4Address(*address);
  config_.SetIpv4Netmask(*netmask);
  config_.SetIpv4Gateway(*gateway);
  return true;
}

}  // namespace Kiva
