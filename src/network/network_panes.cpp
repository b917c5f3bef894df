// SPDX-License-Identifier: MIT
#include "network/network_panes.h"

#include "network/pending_changes.h"
#include "ui/markup_text.h"
#include "ui/string_factory.h"

namespace Kiva {

using HostCtl::Network::IpAddress;
using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv4Address;

namespace {

std::string orNotSet(const std::string& value) {
  return value.empty() ? catalogueText(TextId::kNotSet) : value;
}

std::string pane(const std::string& values, TextId explanation) {
  return "{color:white}" + values + "\n\n{/color}{color:light-grey}" + catalogueText(explanation) +
         "{/color}";
}

/// The value behind its label, or below it.
std::string line(TextId label, const std::string& value) {
  return std::string(catalogueText(label)) + ": " + orNotSet(value) + "\n";
}
std::string group(TextId label, const std::string& value) {
  return std::string(catalogueText(label)) + ":\n" + orNotSet(value);
}

template <typename Address>
std::string textOf(const Address& address) {
  return address.IsEmpty() ? "" : plainText(toString(IpAddress(address)));
}

TextId ipv4Mode(const IpConfig& config) {
  if (config.GetIpv4UseNone()) return TextId::kNone;
  return config.GetIpv4UseDhcp() ? TextId::kAutomatic : TextId::kManual;
}

std::string staticNetworks(const IpConfig& config) {
  std::string text;
  for (const auto& network : config.GetStaticIpv6Networks())
    text += (text.empty() ? "" : "\n") + plainText(network.ToString());
  return text;
}

}  // namespace

std::string adaptersPane(const PendingNetwork& pending, Pnics pnics, int columns) {
  Pnics chosen = ordered(std::move(pnics), pending.adapters);
  chosen.resize(pending.adapters.size());
  return pane(orNotSet(adapterSummary(chosen, columns)), TextId::kAdaptersListedHere);
}

std::string vlanPane(const PendingNetwork& pending) {
  return pane(orNotSet(pending.vlanId == 0 ? "" : std::to_string(pending.vlanId)),
              TextId::kAVlanIsAVirtualNetwork);
}

std::string ipv4Pane(const PendingNetwork& pending) {
  const IpConfig& config = pending.ipConfig;
  std::string values = std::string(catalogueText(ipv4Mode(config))) + "\n\n" +
                       line(TextId::kIPv4Address, textOf(config.GetIpv4Address())) +
                       line(TextId::kSubnetMask, textOf(config.GetIpv4Netmask())) +
                       line(TextId::kDefaultGateway, textOf(config.GetIpv4Gateway()));
  values.pop_back();
  return pane(values, TextId::kHostCanObtainIPv4Address);
}

// Addresses mean something only while the kernel has IPv6.
std::string ipv6Pane(const PendingNetwork& pending) {
  const std::string state =
      catalogueText(pending.ipv6Enabled ? TextId::kIPv6IsEnabled : TextId::kIPv6IsDisabled);
  if (!pending.ipv6EnabledAtStart)
    return pane(state, pending.ipv6Enabled ? TextId::kIPv6EnabledAfterNextReboot
                                           : TextId::kHostCanSupportIPv6);
  const IpConfig& config = pending.ipConfig;
  const TextId mode = isIpv6Dynamic(config) ? TextId::kAutomatic : TextId::kManual;
  return pane(state + "\n\n" + catalogueText(mode) + "\n\n" +
                  group(TextId::kIPv6Addresses, staticNetworks(config)) + "\n" +
                  group(TextId::kDefaultGateway, textOf(config.GetIpv6Gateway())),
              TextId::kHostCanObtainIPv6Addresses);
}

std::string dnsPane(const PendingNetwork& pending) {
  const bool automatic = pending.ipConfig.GetDnsFromDhcp();
  return pane(std::string(catalogueText(automatic ? TextId::kAutomatic : TextId::kManual)) +
                  "\n\n" + group(TextId::kHostname, plainText(pending.hostname)) + "\n" +
                  group(TextId::kPrimaryDnsServer, plainText(toString(pending.primaryDns))) +
                  "\n\n" +
                  group(TextId::kAlternateDnsServer, plainText(toString(pending.alternateDns))),
              TextId::kDnsObtainedAutomatically);
}

std::string suffixesPane(const PendingNetwork& pending) {
  return pane(orNotSet(plainText(pending.suffixes)), TextId::kDnsQueriesAppendSuffixes);
}

}  // namespace Kiva
