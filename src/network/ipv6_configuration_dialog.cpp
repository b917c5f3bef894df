// SPDX-License-Identifier: MIT
#include "network/ipv6_configuration_dialog.h"

#include <algorithm>

#include "core/keys.h"
#include "core/log.h"
#include "network/pending_changes.h"

namespace Kiva {

using HostCtl::Network::AddressType;
using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv6Address;
using HostCtl::Network::Ipv6Network;

namespace {

/// The longest address with its prefix, and the cursor behind it.
constexpr int kFieldWidth = 44;

std::vector<Ipv6Network> withField(std::vector<Ipv6Network> networks) {
  networks.resize(std::min(networks.size(), IPv6ConfigurationDialog::kAddresses));
  return networks;
}

std::string textOf(const Ipv6Address& gateway) {
  return gateway.IsEmpty() ? "" : gateway.GetScopedAddress();
}

bool contains(const std::vector<Ipv6Network>& all, const Ipv6Network& one) {
  return std::find(all.begin(), all.end(), one) != all.end();
}

void replaceStaticNetworks(IpConfig& config, const std::vector<Ipv6Network>& networks) {
  auto all = config.GetIpv6Networks();
  std::erase_if(all, [](const Ipv6Network& one) { return one.type == AddressType::Static; });
  all.insert(all.end(), networks.begin(), networks.end());
  config.SetIpv6Networks(std::move(all));
}

}  // namespace

IPv6ConfigurationDialog::IPv6ConfigurationDialog(Frame& owner, const PendingNetwork& pending)
    : ChoiceDialog(owner, {.title = TextId::kIPv6ConfigurationTitle,
                           .text = TextId::kHostCanObtainSettingsBySlaac,
                           .width = 74,
                           .height = 19,
                           .topHeight = 7}),
      enabled_(pending.ipv6Enabled),
      config_(pending.ipConfig),
      shown_(withField(config_.GetStaticIpv6Networks())),
      disable_(AddChoice(TextId::kDisableIPv6, !enabled_)),
      dynamic_(AddChoice(TextId::kUseDynamicIPv6Address, enabled_ && isIpv6Dynamic(config_))),
      dhcp_(AddCheckOf(dynamic_, TextId::kUseDhcpv6, config_.GetIpv6UseDhcp())),
      static_(AddChoice(TextId::kSetStaticIPv6Address, enabled_ && !isIpv6Dynamic(config_))),
      addresses_{&AddAddress(1), &AddAddress(2), &AddAddress(3)},
      gateway_(AddFieldOf(static_, Text(TextId::kDefaultGatewayLabel), kFieldWidth,
                          textOf(config_.GetIpv6Gateway()))) {}

InputItem& IPv6ConfigurationDialog::AddAddress(int number) {
  const auto index = static_cast<std::size_t>(number - 1);
  return AddFieldOf(static_, formatted("%s #%d", Text(TextId::kStaticAddress), number), kFieldWidth,
                    index < shown_.size() ? shown_[index].ToString() : "");
}

bool IPv6ConfigurationDialog::Takes(int key) const {
  return Key::isDigit(key) || Key::isLetter(key) || key == ':' || key == '/' || key == '%';
}

// What is dynamic already and asks DHCPv6 as before stays as it is, advertisements too, so that
// switching IPv6 off and on again changes nothing.
IpConfig IPv6ConfigurationDialog::MarkedConfig() const {
  IpConfig config = config_;
  if (!WasTouched() || disable_.IsSelected()) return config;
  const bool sameSource = dhcp_.IsChecked() == config.GetIpv6UseDhcp();
  if (dynamic_.IsSelected() && isIpv6Dynamic(config) && sameSource) return config;
  config.SetUseIpv6Dhcp(dynamic_.IsSelected() && dhcp_.IsChecked());
  config.SetUseIpv6RouterAdvertised(dynamic_.IsSelected() && !dhcp_.IsChecked());
  return config;
}

bool IPv6ConfigurationDialog::Accept() {
  IpConfig config = MarkedConfig();
  if (static_.IsSelected() && !(AcceptAddresses(config) && AcceptGateway(config))) return false;
  enabled_ = !disable_.IsSelected();
  config_ = config;
  return true;
}

// Networks beyond those that have a field stay as long as nothing is changed.
bool IPv6ConfigurationDialog::AcceptAddresses(IpConfig& config) {
  using enum TextId;
  std::vector<Ipv6Network> networks;
  for (const InputItem* field : addresses_) {
    if (field->Value().empty()) continue;
    const auto network = Ipv6Network::FromString(field->Value());
    if (!network) return Refuse(*field, kInvalidIpAddress, kReenterIPv6Network);
    if (network->address.IsLinkLocal() && !contains(shown_, *network))
      return Refuse(*field, kInvalidScope, kCannotAddLinkLocalAddress);
    if (!contains(networks, *network)) networks.push_back(*network);
  }
  if (networks != shown_) replaceStaticNetworks(config, networks);
  return true;
}

// A link-local gateway that a router advertised may stay.
bool IPv6ConfigurationDialog::AcceptGateway(IpConfig& config) {
  using enum TextId;
  const std::string& text = gateway_.Value();
  const auto gateway = text.empty() ? std::optional(Ipv6Address()) : Ipv6Address::FromString(text);
  if (!gateway) return Refuse(gateway_, kInvalidGatewayAddress, kReenterIPv6GatewayAddress);
  if (gateway->IsLinkLocal() && *gateway != config_.GetIpv6Gateway())
    return Refuse(gateway_, kInvalidGatewayAddress, kLinkLocalGatewayNotSupported);
  config.SetIpv6Gateway(*gateway);
  return true;
}

}  // namespace Kiva
