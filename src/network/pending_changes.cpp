// SPDX-License-Identifier: MIT
#include "network/pending_changes.h"

namespace Kiva {

using HostCtl::Network::IpConfig;

namespace {

template <typename Value>
void choose(PendingNetwork& pending, Value PendingNetwork::*what, const Value& chosen) {
  if (pending.*what == chosen) return;
  pending.*what = chosen;
  pending.changed = true;
}

bool sameIpv4(const IpConfig& a, const IpConfig& b) {
  if (a.GetIpv4UseNone() || b.GetIpv4UseNone()) return a.GetIpv4UseNone() == b.GetIpv4UseNone();
  if (a.GetIpv4UseDhcp() || b.GetIpv4UseDhcp()) return a.GetIpv4UseDhcp() == b.GetIpv4UseDhcp();
  return a.GetIpv4Address() == b.GetIpv4Address() && a.GetIpv4Netmask() == b.GetIpv4Netmask() &&
         a.GetIpv4Gateway() == b.GetIpv4Gateway();
}

}  // namespace

void chooseAdapters(PendingNetwork& pending, const std::vector<std::string>& adapters) {
  choose(pending, &PendingNetwork::adapters, adapters);
}

void chooseVlanId(PendingNetwork& pending, std::int16_t vlanId) {
  choose(pending, &PendingNetwork::vlanId, vlanId);
}

void chooseIpv4(PendingNetwork& pending, const IpConfig& chosen) {
  if (!sameIpv4(pending.ipConfig, chosen)) choose(pending, &PendingNetwork::ipConfig, chosen);
}

void chooseIpv6(PendingNetwork& pending, const IpConfig& chosen, bool enabled) {
  pending.ipv6Enabled = enabled;
  if (chosen == pending.ipConfig) return;
  const bool hadGateway = !pending.ipConfig.GetIpv6Gateway().IsEmpty();
  choose(pending, &PendingNetwork::ipConfig, chosen);
  if (isIpv6Dynamic(chosen))
    pending.ipv6GatewaySet = false;
  else if (hadGateway || !chosen.GetIpv6Gateway().IsEmpty())
    pending.ipv6GatewaySet = true;
}

// Name servers from DHCP can be marked only beside an IPv4 address from there, so a dialog that was
// confirmed as it opened says nothing about those that DHCPv6 gives.
void chooseDns(PendingNetwork& pending, const ChosenDns& chosen) {
  const bool same = chosen.primary == pending.primaryDns &&
                    chosen.alternate == pending.alternateDns && chosen.hostname == pending.hostname;
  if (same && !chosen.marked && !pending.ipConfig.GetIpv4UseDhcp()) return;
  IpConfig config = pending.ipConfig;
  config.SetDhcpDns(chosen.fromDhcp);
  choose(pending, &PendingNetwork::ipConfig, config);
  if (chosen.fromDhcp) return;
  choose(pending, &PendingNetwork::primaryDns, chosen.primary);
  choose(pending, &PendingNetwork::alternateDns, chosen.alternate);
  choose(pending, &PendingNetwork::hostname, chosen.hostname);
}

void chooseSuffixes(PendingNetwork& pending, const std::string& suffixes) {
  choose(pending, &PendingNetwork::suffixes, suffixes);
}

bool hasChanges(const PendingNetwork& pending) {
  return pending.changed || isIpv6Toggled(pending);
}

bool isIpv6Toggled(const PendingNetwork& pending) {
  return pending.ipv6Enabled != pending.ipv6EnabledAtStart;
}

bool isIpv6Dynamic(const IpConfig& config) {
  return config.GetIpv6UseDhcp() || config.GetIpv6UseRouterAdvertisement();
}

}  // namespace Kiva
